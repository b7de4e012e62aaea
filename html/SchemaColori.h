#pragma once

#include "platform/Aspetto.h"

/// The colours in which a page is shown.
namespace SchemaColori
{

inline constexpr ColoreBgr Testo = 0x000000;     ///< what is typed inside a tag, until the tag is checked
inline constexpr ColoreBgr Tag = 0xC00000;       ///< known tag names
inline constexpr ColoreBgr Attributo = 0xFF00FF; ///< known attribute names
inline constexpr ColoreBgr Valore = 0x0000FF;    ///< allowed values
inline constexpr ColoreBgr Commento = 0x808080;  ///< comments; with a wavy underline, unknown names and values

} // namespace SchemaColori
