#include "platform/Text.h"

#include <algorithm>
#include <cstdint>
#include <limits>
#include <memory>

#include <unicode/brkiter.h>
#include <unicode/coll.h>
#include <unicode/locid.h>
#include <unicode/normalizer2.h>
#include <unicode/uchar.h>
#include <unicode/unistr.h>
#include <unicode/ustring.h>

namespace platform::text {

namespace {

/// ICU counts in 32 bits.
constexpr std::size_t LONGEST = std::numeric_limits<std::int32_t>::max();

icu::StringPiece piece(std::string_view text)
{
    return {text.data(), static_cast<std::int32_t>(std::min(text.size(), LONGEST))};
}

icu::UnicodeString decoded(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(piece(text));
}

bool isAscii(std::string_view text)
{
    return std::all_of(text.begin(), text.end(), [](char character) {
        return static_cast<unsigned char>(character) < 0x80U;
    });
}

int sign(int value)
{
    return (value > 0) - (value < 0);
}

/// Tertiary strength; empty on failure, since ICU gives no object then.
std::unique_ptr<icu::Collator> makeRootCollator()
{
    UErrorCode status = U_ZERO_ERROR;
    return std::unique_ptr<icu::Collator>(
        icu::Collator::createInstance(icu::Locale::getRoot(), status)
    );
}

/// A collator is not safe for concurrent use in all its operations, so each thread has its own.
thread_local const std::unique_ptr<icu::Collator> ROOT_COLLATOR = makeRootCollator();

int collationOrder(std::string_view left, std::string_view right)
{
    if (ROOT_COLLATOR == nullptr) {
        return 0;
    }
    UErrorCode status = U_ZERO_ERROR;
    const int order = ROOT_COLLATOR->compareUTF8(piece(left), piece(right), status);
    return U_SUCCESS(status) != 0 ? order : 0;
}

bool isTrimmable(UChar32 character)
{
    return u_isUWhiteSpace(character) != 0;
}

} // namespace

std::size_t characterCount(std::string_view text)
{
    const icu::UnicodeString string = decoded(text);
    UErrorCode status = U_ZERO_ERROR;
    const std::unique_ptr<icu::BreakIterator> iterator(
        icu::BreakIterator::createCharacterInstance(icu::Locale::getRoot(), status)
    );
    if (U_FAILURE(status) != 0 || iterator == nullptr) {
        return static_cast<std::size_t>(string.countChar32());
    }
    iterator->setText(string);
    std::size_t count = 0;
    while (iterator->next() != icu::BreakIterator::DONE) {
        ++count;
    }
    return count;
}

bool canonicallyEqual(std::string_view left, std::string_view right)
{
    if (left == right) {
        return true;
    }
    if (!isValidUtf8(left) || !isValidUtf8(right)) {
        return false;
    }
    UErrorCode status = U_ZERO_ERROR;
    const icu::Normalizer2* normalizer = icu::Normalizer2::getNFDInstance(status);
    if (U_FAILURE(status) != 0) {
        return false;
    }
    const icu::UnicodeString first = normalizer->normalize(decoded(left), status);
    const icu::UnicodeString second = normalizer->normalize(decoded(right), status);
    return U_SUCCESS(status) != 0 && first == second;
}

std::string lowercase(std::string_view text)
{
    icu::UnicodeString string = decoded(text);
    string.toLower(icu::Locale::getRoot());
    std::string result;
    string.toUTF8String(result);
    return result;
}

int compare(std::string_view left, std::string_view right)
{
    const bool bothAscii = isAscii(left) && isAscii(right);
    const int order = bothAscii ? 0 : collationOrder(left, right);
    return order != 0 ? order : sign(left.compare(right));
}

std::string trimmed(std::string_view text)
{
    const icu::UnicodeString string = decoded(text);
    std::int32_t begin = 0;
    std::int32_t end = string.length();
    while (begin < end && isTrimmable(string.char32At(begin))) {
        begin = string.moveIndex32(begin, 1);
    }
    while (end > begin && isTrimmable(string.char32At(end - 1))) {
        end = string.moveIndex32(end, -1);
    }
    std::string result;
    string.tempSubStringBetween(begin, end).toUTF8String(result);
    return result;
}

bool isValidUtf8(std::string_view bytes)
{
    if (bytes.size() > LONGEST) {
        return false;
    }
    UErrorCode status = U_ZERO_ERROR;
    std::int32_t needed = 0;
    const icu::StringPiece text = piece(bytes);
    u_strFromUTF8(nullptr, 0, &needed, text.data(), text.length(), &status);
    return status != U_INVALID_CHAR_FOUND;
}

} // namespace platform::text
