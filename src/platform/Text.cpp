#include "platform/Text.h"

#include <algorithm>
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

icu::UnicodeString decoded(std::string_view text)
{
    return icu::UnicodeString::fromUTF8(
        icu::StringPiece(text.data(), static_cast<int32_t>(text.size()))
    );
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

/// Tertiary strength of the root locale. A collator is not safe for concurrent use in all its
/// operations, so each thread has its own.
const icu::Collator* rootCollator()
{
    thread_local const std::unique_ptr<icu::Collator> collator = [] {
        UErrorCode status = U_ZERO_ERROR; // on failure ICU gives no object
        return std::unique_ptr<icu::Collator>(
            icu::Collator::createInstance(icu::Locale::getRoot(), status)
        );
    }();
    return collator.get();
}

int collationOrder(std::string_view left, std::string_view right)
{
    const icu::Collator* collator = rootCollator();
    if (collator == nullptr) {
        return 0;
    }
    UErrorCode status = U_ZERO_ERROR;
    const int order = collator->compare(decoded(left), decoded(right), status);
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
    int32_t begin = 0;
    int32_t end = string.length();
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
    UErrorCode status = U_ZERO_ERROR;
    int32_t needed = 0;
    u_strFromUTF8(nullptr, 0, &needed, bytes.data(), static_cast<int32_t>(bytes.size()), &status);
    return status != U_INVALID_CHAR_FOUND;
}

} // namespace platform::text
