#pragma once

#include <qwt_text.h>

/// Texts of tick labels that are measured once and not at every step of a zoom.
namespace TickText {

/// A text as QwtText makes it of a string by itself, QwtText::AutoText. Where it would be plain, it is drawn
/// and measured alike, only that sizes and margins are remembered: Qwt writes out a font's whole description
/// to look its margins up, some two hundred times a frame.
///
/// Only Qwt's own formats are asked whether they claim the string.
QwtText text(const QString& string);

}
