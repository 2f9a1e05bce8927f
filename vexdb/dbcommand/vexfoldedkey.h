#pragma once

/// A typed key as the keyword lists hold it. Every code from 'a' on is lowered by 0x20, not only
/// the letters, so that '{' answers to '[': the lists are written for this folding.
constexpr wchar_t foldedKey(wchar_t character)
{
    constexpr wchar_t kCaseDistance = 0x20;
    return character >= L'a' ? static_cast<wchar_t>(character - kCaseDistance) : character;
}
