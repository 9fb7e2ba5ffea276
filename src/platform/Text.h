// What a user's string does by itself: counting, comparing, folding, ordering. Independent of the
// user's locale, so that two machines agree. All strings are UTF-8; ill-formed bytes count as
// U+FFFD and never make a call fail. A text of 2 GiB or more counts as ill-formed and only its
// beginning is looked at. Thread-safe.
#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace platform::text {

/// Number of user-perceived characters (extended grapheme clusters).
std::size_t characterCount(std::string_view text);

/// Canonical equality: true when both have the same NFD form. Case-sensitive, nothing is trimmed.
/// Ill-formed text equals only the same bytes.
bool canonicallyEqual(std::string_view left, std::string_view right);

/// Full lower-case mapping of the root locale.
std::string lowercase(std::string_view text);

/// Not transitive where pure ASCII strings meet others, so not an order for the algorithms of the
/// standard library. Negative, zero or positive as `left` sorts before, with or after `right`. Two
/// pure ASCII strings compare byte by byte; all others by root collation, ties broken by their
/// bytes. Zero only for identical bytes.
int compare(std::string_view left, std::string_view right);

/// `text` without the Unicode white space and line breaks at both ends.
std::string trimmed(std::string_view text);

/// True when `bytes` is well-formed UTF-8.
bool isValidUtf8(std::string_view bytes);

} // namespace platform::text
