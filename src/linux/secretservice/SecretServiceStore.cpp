#include "linux/secretservice/SecretServiceStore.h"

#include "linux/secretservice/GenericPasswordSchema.h"

#include <memory>
#include <span>
#include <utility>

namespace secretservice {

namespace {

using Collection = SecretServiceSession::Collection;
using ValuePtr = std::unique_ptr<SecretValue, Release<secret_value_unref>>;

constexpr auto LOCKED = "is locked";

SecretSearchFlags flags(int combined)
{
    return static_cast<SecretSearchFlags>(combined);
}

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
    switch (session.defaultCollection(reason)) {
    case Collection::Unlocked:
        return {.state = State::Missing};
    case Collection::Absent:
        return {.state = State::Unproven};
    case Collection::Locked:
        return {.state = State::Failed, .reason = LOCKED};
    case Collection::Unknown:
        break;
    }
    return {.state = State::Failed, .reason = reason};
}

ItemRead SecretServiceStore::read(const std::string& account)
{
    ItemRead result;
    SecretService* service = session.open(result.reason);
    if (service == nullptr) {
        return result;
    }
    const AttributesPtr attributes = accountAttributes(account);
    Error error;
    const ObjectListPtr found(secret_service_search_sync(
        service,
        &genericPasswordSchema(),
        attributes.get(),
        SECRET_SEARCH_LOAD_SECRETS,
        session.cancellable(),
        error.out()
    ));
    if (error.isSet()) {
        result.reason = error.message();
        return result;
    }
    if (!found) {
        return nothingFound();
    }
    if (takeSecret(itemOf(found.get()), result.data)) {
        result.state = ItemRead::State::Found;
    } else {
        result.reason = LOCKED;
    }
    return result;
}

Failure SecretServiceStore::readAll(Items& items)
{
    std::string reason;
    SecretService* service = session.open(reason);
    if (service == nullptr) {
        return reason;
    }
    const AttributesPtr attributes = anyAttributes();
    Error error;
    const ObjectListPtr found(secret_service_search_sync(
        service,
        &genericPasswordSchema(),
        attributes.get(),
        flags(SECRET_SEARCH_ALL | SECRET_SEARCH_LOAD_SECRETS),
        session.cancellable(),
        error.out()
    ));
    if (error.isSet()) {
        return error.message();
    }
    if (session.defaultCollection(reason) == Collection::Locked) {
        return LOCKED;
    }
    Items all;
    for (GList* node = found.get(); node != nullptr; node = node->next) {
        SecretBytes data;
        if (!takeSecret(itemOf(node), data)) {
            return LOCKED;
        }
        all.emplace(accountOf(itemOf(node)), std::move(data));
    }
    items = std::move(all);
    return std::nullopt;
}

Failure
SecretServiceStore::put(const std::string& account, const SecretBytes& data, Prompting prompting)
{
    std::string reason;
    SecretService* service = session.open(reason);
    if (service == nullptr) {
        return reason;
    }
    // A locked collection is unlocked, and a missing one made, by the service's own prompt.
    const bool ready = prompting == Prompting::Allowed ||
                       session.defaultCollection(reason) == Collection::Unlocked;
    if (!ready) {
        return LOCKED;
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
    const AttributesPtr attributes = accountAttributes(account);
    Error error;
    const gboolean stored = secret_service_store_sync(
        service,
        &genericPasswordSchema(),
        attributes.get(),
        SECRET_COLLECTION_DEFAULT,
        account.c_str(),
        value.get(),
        session.cancellable(),
        error.out()
    );
    return stored == TRUE ? Failure() : Failure(error.message());
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
    std::string reason;
    SecretService* service = session.open(reason);
    if (service == nullptr) {
        return reason;
    }
    const int unlock = prompting == Prompting::Allowed ? SECRET_SEARCH_UNLOCK : 0;
    Error error;
    const ObjectListPtr found(secret_service_search_sync(
        service,
        &genericPasswordSchema(),
        attributes,
        flags(SECRET_SEARCH_ALL | unlock),
        session.cancellable(),
        error.out()
    ));
    if (error.isSet()) {
        return error.message();
    }
    for (GList* node = found.get(); node != nullptr; node = node->next) {
        if (secret_item_get_locked(itemOf(node)) == TRUE) {
            return LOCKED;
        }
        if (secret_item_delete_sync(itemOf(node), session.cancellable(), error.out()) != TRUE) {
            return error.message();
        }
    }
    if (session.defaultCollection(reason) == Collection::Locked) {
        return LOCKED;
    }
    return std::nullopt;
}

} // namespace secretservice
