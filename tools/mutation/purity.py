"""Tells the files of functions of numbers and texts from those with widgets, painters or tables."""

IMPURE = {
    "curvepainter.cpp", "fieldreading.cpp", "futurelookup.cpp", "guardedscaleengine.cpp", "legendcheckbox.cpp",
    "legendcheckbox_p.h", "legendicons.cpp", "opaqueaxis.cpp", "opaqueaxis_p.h", "pixelpainter_p.h", "plotcanvas.cpp",
    "plotcanvas_p.h", "plotitems.cpp", "plotlook.cpp", "plotmouse.cpp", "quoteline.cpp", "rememberingtextengine.cpp",
    "securitycolumns.cpp", "securitycolumns.h", "styledbackground.cpp", "styledbackground_p.h",
}  # fmt: skip
PURE = {"pricebased2dplotconverter.cpp", "pricebased2dplotconverter.h"}


def is_pure(file):
    """Whether a file of the library has functions of numbers and texts only."""
    return file in PURE or not (file.startswith("pricebased2dplot") or file in IMPURE)
