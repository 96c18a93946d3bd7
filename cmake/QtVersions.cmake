# The oldest versions that the sources ask for, with the Qt that PLOT2D_QT_VERSION chooses.
# What Qt had deprecated by then is not there for the sources (PLOT2D_QT_DEPRECATED: two hexadecimal digits each
# for major, minor and patch).
if(PLOT2D_QT_VERSION STREQUAL "5")
    set(PLOT2D_QT_MINIMUM 5.15)
    # Qwt 6.1 says what was deprecated with 5.15; of our own sources the compiler warns.
    set(PLOT2D_QT_DEPRECATED 0x050E00)
    set(PLOT2D_QWT_MINIMUM 6.1)
elseif(PLOT2D_QT_VERSION STREQUAL "6")
    set(PLOT2D_QT_MINIMUM 6.4)
    set(PLOT2D_QT_DEPRECATED 0x060400)
    # The first one for Qt 6.
    set(PLOT2D_QWT_MINIMUM 6.2)
else()
    message(FATAL_ERROR "PLOT2D_QT_VERSION is ${PLOT2D_QT_VERSION}; there are sources for Qt 5 and Qt 6 alone.")
endif()
