#pragma once

#include <qwt_text.h>

/// Texts of tick labels that are measured once and not at every step of a zoom.
namespace TickText {

/// A text as QwtText makes it of a string by itself, QwtText::AutoText. Where that is plain, this one is
/// drawn and measured alike, only that its sizes and margins are remembered: Qwt writes out a font's whole
/// description to look its margins up, some two hundred times a frame.
QwtText text(const QString& string);

/// The format of those whose measures are remembered, for which the engine is set.
QwtText::TextFormat rememberedFormat();

}
