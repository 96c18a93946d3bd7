# plot2d_options carries the compiler's options for our own targets; it is linked PRIVATE and never
# reaches a consumer of the library.
add_library(plot2d_options INTERFACE)
target_compile_options(plot2d_options INTERFACE -Wall -Wextra -Wpedantic -Wshadow -Wconversion)
target_compile_definitions(plot2d_options INTERFACE
    QT_NO_KEYWORDS
    QT_DEPRECATED_WARNINGS
    QT_DISABLE_DEPRECATED_BEFORE=${PLOT2D_QT_DEPRECATED})

# Qt 6 counts in 64 bits. The library and the host say where an int is enough; the rest is checked with Qt 5.
if(PLOT2D_QT_VERSION EQUAL 6)
    set(source_is_checked "$<PATH:IS_PREFIX,${PROJECT_SOURCE_DIR}/src,$<TARGET_PROPERTY:SOURCE_DIR>>")
    target_compile_options(plot2d_options INTERFACE $<$<NOT:${source_is_checked}>:-Wno-conversion>)
endif()

if(PLOT2D_WARNINGS_AS_ERRORS)
    target_compile_options(plot2d_options INTERFACE -Werror)
endif()

if(PLOT2D_SANITIZERS)
    add_compile_options(-fsanitize=${PLOT2D_SANITIZERS} -fno-omit-frame-pointer -fno-sanitize-recover=all)
    add_link_options(-fsanitize=${PLOT2D_SANITIZERS})
    # An index beyond a vector's end within its memory, and an optional without a value, are no fault of memory.
    add_compile_definitions(_GLIBCXX_ASSERTIONS)
endif()

# The link leaves nothing undefined: a symbol that a library forgot to link is found here and not by
# the application. The sanitizers' run-time is linked into the executable only, hence the exception.
if(NOT PLOT2D_SANITIZERS)
    add_link_options(LINKER:--no-undefined)
endif()
