// The numbers of the character map's texts, items and commands.
#pragma once

#include "KvTypes.h"

namespace kv {

inline constexpr UINT kTextCharacters = 20400;
inline constexpr UINT kTextSearchHint = 20401;
inline constexpr UINT kTextNoMatch = 20402;
inline constexpr UINT kTextRecent = 20403;
inline constexpr UINT kTextFavorites = 20404;
inline constexpr UINT kTextCollected = 20405;
inline constexpr UINT kTextInsert = 20406;
inline constexpr UINT kTextCollect = 20407;
inline constexpr UINT kTextCopy = 20408;
inline constexpr UINT kTextFavorite = 20409;
inline constexpr UINT kTextNoFace = 20410;
inline constexpr UINT kTextNothingSelected = 20411;
inline constexpr UINT kTextNoCharacters = 20412;
inline constexpr UINT kTextFavoritesFull = 20413;

} // namespace kv
