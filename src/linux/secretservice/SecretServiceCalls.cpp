#include "linux/secretservice/SecretServiceCalls.h"

#include "linux/secretservice/GenericPasswordSchema.h"

#include <utility>

namespace secretservice {

namespace {

/// False, with the reason, when the call that `error` is of has failed.
bool isDone(const Error& error, std::string& reason)
{
    if (error.isSet()) {
        reason = error.message();
    }
    return !error.isSet();
}

} // namespace

std::optional<ObjectListPtr> searchItems(
    SecretServiceSession& session,
    GHashTable* attributes,
    SecretSearchFlags flags,
    std::string& reason
)
{
    const AsyncCall call;
    secret_service_search(
        session.service(),
        &genericPasswordSchema(),
        attributes,
        flags,
        session.cancellable(),
        AsyncCall::finished,
        call.data()
    );
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return std::nullopt;
    }
    Error error;
    ObjectListPtr found(secret_service_search_finish(session.service(), result, error.out()));
    return isDone(error, reason) ? std::optional(std::move(found)) : std::nullopt;
}

std::optional<ObjectPtr<SecretCollection>>
findDefaultCollection(SecretServiceSession& session, std::string& reason)
{
    const AsyncCall call;
    secret_collection_for_alias(
        session.service(),
        SECRET_COLLECTION_DEFAULT,
        SECRET_COLLECTION_NONE,
        session.cancellable(),
        AsyncCall::finished,
        call.data()
    );
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return std::nullopt;
    }
    Error error;
    ObjectPtr<SecretCollection> found(secret_collection_for_alias_finish(result, error.out()));
    return isDone(error, reason) ? std::optional(std::move(found)) : std::nullopt;
}

CollectionState defaultCollectionState(SecretServiceSession& session, std::string& reason)
{
    const auto found = findDefaultCollection(session, reason);
    if (!found.has_value()) {
        return CollectionState::Unknown;
    }
    if (!*found) {
        return CollectionState::Absent;
    }
    return secret_collection_get_locked(found->get()) == TRUE ? CollectionState::Locked
                                                              : CollectionState::Unlocked;
}

std::optional<ObjectListPtr> findEveryCollection(SecretServiceSession& session, std::string& reason)
{
    const AsyncCall call;
    secret_service_load_collections(
        session.service(), session.cancellable(), AsyncCall::finished, call.data()
    );
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return std::nullopt;
    }
    Error error;
    secret_service_load_collections_finish(session.service(), result, error.out());
    if (!isDone(error, reason)) {
        return std::nullopt;
    }
    return ObjectListPtr(secret_service_get_collections(session.service()));
}

bool unlockObjects(SecretServiceSession& session, GList* objects, std::string& reason)
{
    const AsyncCall call;
    secret_service_unlock(
        session.service(), objects, session.cancellable(), AsyncCall::finished, call.data()
    );
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return false;
    }
    Error error;
    secret_service_unlock_finish(session.service(), result, nullptr, error.out());
    return isDone(error, reason);
}

bool storeItem(
    SecretServiceSession& session,
    const std::string& account,
    SecretValue* value,
    std::string& reason
)
{
    const AttributesPtr attributes = accountAttributes(account);
    const AsyncCall call;
    secret_service_store(
        session.service(),
        &genericPasswordSchema(),
        attributes.get(),
        SECRET_COLLECTION_DEFAULT,
        account.c_str(),
        value,
        session.cancellable(),
        AsyncCall::finished,
        call.data()
    );
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return false;
    }
    Error error;
    const gboolean stored = secret_service_store_finish(session.service(), result, error.out());
    if (stored != TRUE) {
        reason = error.message();
    }
    return stored == TRUE;
}

bool deleteItem(SecretServiceSession& session, SecretItem* item, std::string& reason)
{
    const AsyncCall call;
    secret_item_delete(item, session.cancellable(), AsyncCall::finished, call.data());
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return false;
    }
    Error error;
    const gboolean deleted = secret_item_delete_finish(item, result, error.out());
    if (deleted != TRUE) {
        reason = error.message();
    }
    return deleted == TRUE;
}

} // namespace secretservice
