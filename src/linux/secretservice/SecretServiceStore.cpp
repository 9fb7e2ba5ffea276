#include "linux/secretservice/SecretServiceStore.h"

#include "linux/secretservice/GenericPasswordSchema.h"
#include "linux/secretservice/KeyringUnlock.h"
#include "linux/secretservice/SecretServiceCalls.h"

#include <memory>
#include <span>
#include <string_view>
#include <utility>

namespace secretservice {

namespace {

using ValuePtr = std::unique_ptr<SecretValue, Release<secret_value_unref>>;

constexpr auto LOCKED = "is locked";

SecretItem* itemOf(GList* node)
{
    return static_cast<SecretItem*>(node->data);
}

/// False when the item does not give its secret away, which is when it is locked.
bool takeSecret(SecretItem* item, SecretBytes& data)
{
    const ValuePtr value(secret_item_get_secret(item));
    if (!value) {
        return false;
    }
    gsize length = 0;
    const gchar* bytes = secret_value_get(value.get(), &length);
    data.assign(bytes, bytes + length);
    return true;
}

std::string accountOf(SecretItem* item)
{
    const AttributesPtr attributes(secret_item_get_attributes(item));
    const void* account = g_hash_table_lookup(attributes.get(), ACCOUNT_ATTRIBUTE);
    return account == nullptr ? std::string() : std::string(static_cast<const char*>(account));
}

} // namespace

SecretServiceStore::SecretServiceStore(KeptMarker marker) : marker(std::move(marker)) {}

std::string SecretServiceStore::title() const
{
    return "the keyring";
}

void SecretServiceStore::cancel() noexcept
{
    session.cancel();
}

void SecretServiceStore::leaveThread()
{
    session.leave();
}

ItemRead SecretServiceStore::nothingFound()
{
    using State = ItemRead::State;
    std::string reason;
    switch (defaultCollectionState(session, reason)) {
    case CollectionState::Unlocked:
        return {.state = State::Missing};
    case CollectionState::Absent:
        return {.state = State::Unproven};
    case CollectionState::Locked:
        return {.state = State::Failed, .reason = LOCKED};
    case CollectionState::Unknown:
        break;
    }
    return {.state = State::Failed, .reason = reason};
}

ItemRead SecretServiceStore::read(const std::string& account)
{
    ItemRead result;
    if (session.open(result.reason) == nullptr) {
        return result;
    }
    const AttributesPtr attributes = accountAttributes(account);
    const auto found =
        searchItems(session, attributes.get(), SECRET_SEARCH_LOAD_SECRETS, result.reason);
    if (!found.has_value()) {
        return result;
    }
    if (!*found) {
        return nothingFound();
    }
    if (takeSecret(itemOf(found->get()), result.data)) {
        result.state = ItemRead::State::Found;
    } else {
        result.reason = LOCKED;
    }
    return result;
}

Failure SecretServiceStore::readAll(Items& items)
{
    std::string reason;
    if (session.open(reason) == nullptr) {
        return reason;
    }
    const AttributesPtr attributes = anyAttributes();
    const auto flags =
        static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
    const auto found = searchItems(session, attributes.get(), flags, reason);
    if (!found.has_value()) {
        return reason;
    }
    if (defaultCollectionState(session, reason) == CollectionState::Locked) {
        return LOCKED;
    }
    Items all;
    for (GList* node = found->get(); node != nullptr; node = node->next) {
        SecretBytes data;
        if (!takeSecret(itemOf(node), data)) {
            return LOCKED;
        }
        all.emplace(accountOf(itemOf(node)), std::move(data));
    }
    items = std::move(all);
    return std::nullopt;
}

Failure SecretServiceStore::prepareWrite(Prompting prompting)
{
    std::string reason;
    if (prompting == Prompting::Forbidden) {
        return session.open(reason) == nullptr ? Failure(reason) : Failure();
    }
    const platform::Report nobody = [](std::string_view /*line*/) {};
    switch (unlockKeyring(session, false, nobody, reason)) {
    case Unlocking::Open:
        return std::nullopt;
    case Unlocking::StaysLocked:
        return LOCKED;
    case Unlocking::Failed:
        break;
    }
    return reason;
}

Failure
SecretServiceStore::put(const std::string& account, const SecretBytes& data, Prompting prompting)
{
    if (Failure failure = prepareWrite(prompting)) {
        return failure;
    }
    std::string reason;
    const CollectionState collection = defaultCollectionState(session, reason);
    // A missing collection is made, through the service's prompt.
    const bool ready = collection == CollectionState::Unlocked ||
                       (collection == CollectionState::Absent && prompting == Prompting::Allowed);
    if (!ready) {
        return collection == CollectionState::Unknown ? reason : LOCKED;
    }
    if (Failure failure = marker.set()) {
        return failure;
    }
    const std::span<const std::uint8_t> bytes(data);
    const ValuePtr value(secret_value_new(
        bytes.empty() ? "" : reinterpret_cast<const gchar*>(bytes.data()),
        static_cast<gssize>(bytes.size()),
        "text/plain"
    ));
    if (!storeItem(session, account, value.get(), reason)) {
        return reason;
    }
    if (Failure failure = marker.note(true)) {
        return failure;
    }
    return eraseOtherValues(account, data);
}

/// The service replaces what it finds in the default collection, and that alone.
Failure SecretServiceStore::eraseOtherValues(const std::string& account, const SecretBytes& data)
{
    const AttributesPtr attributes = accountAttributes(account);
    const auto flags =
        static_cast<SecretSearchFlags>(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS);
    std::string reason;
    const auto found = searchItems(session, attributes.get(), flags, reason);
    if (!found.has_value()) {
        return reason;
    }
    for (GList* node = found->get(); node != nullptr; node = node->next) {
        SecretBytes other;
        if (!takeSecret(itemOf(node), other)) {
            return LOCKED;
        }
        if (other != data && !deleteItem(session, itemOf(node), reason)) {
            return reason;
        }
    }
    return std::nullopt;
}

Failure SecretServiceStore::erase(const std::string& account, Prompting prompting)
{
    const AttributesPtr attributes = accountAttributes(account);
    return eraseMatches(attributes.get(), prompting);
}

Failure SecretServiceStore::eraseAll(Prompting prompting)
{
    const AttributesPtr attributes = anyAttributes();
    return eraseMatches(attributes.get(), prompting);
}

Failure SecretServiceStore::eraseMatches(GHashTable* attributes, Prompting prompting)
{
    if (Failure failure = prepareWrite(prompting)) {
        return failure;
    }
    std::string reason;
    const auto found = searchItems(session, attributes, SECRET_SEARCH_ALL, reason);
    if (!found.has_value()) {
        return reason;
    }
    for (GList* node = found->get(); node != nullptr; node = node->next) {
        if (secret_item_get_locked(itemOf(node)) == TRUE) {
            return LOCKED;
        }
        if (!deleteItem(session, itemOf(node), reason)) {
            return reason;
        }
    }
    if (defaultCollectionState(session, reason) == CollectionState::Locked) {
        return LOCKED;
    }
    return noteWhetherEmpty();
}

Failure SecretServiceStore::noteWhetherEmpty()
{
    const AttributesPtr attributes = anyAttributes();
    std::string reason;
    const auto left = searchItems(session, attributes.get(), SECRET_SEARCH_ALL, reason);
    if (!left.has_value()) {
        return reason;
    }
    return *left || !marker.isSet() ? Failure() : marker.note(false);
}

} // namespace secretservice
