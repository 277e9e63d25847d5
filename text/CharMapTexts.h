// The numbers of the character map's texts, items and commands.
#pragma once

#include "KvTypes.h"

namespace kv {

inline constexpr UINT kTextCharacters = 12200;
inline constexpr UINT kTextSearchHint = 12201;
inline constexpr UINT kTextNoMatch = 12202;
inline constexpr UINT kTextRecent = 12203;
inline constexpr UINT kTextFavorites = 12204;
inline constexpr UINT kTextCollected = 12205;
inline constexpr UINT kTextInsert = 12206;
inline constexpr UINT kTextCollect = 12207;
inline constexpr UINT kTextCopy = 12208;
inline constexpr UINT kTextFavorite = 12209;
inline constexpr UINT kTextNoFace = 12210;
inline constexpr UINT kTextNothingSelected = 12211;
inline constexpr UINT kTextNoCharacters = 12212;
inline constexpr UINT kTextFavoritesFull = 12213;

} // namespace kv
