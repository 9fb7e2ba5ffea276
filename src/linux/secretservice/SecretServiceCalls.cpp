#include "linux/secretservice/SecretServiceCalls.h"

#include "linux/secretservice/GenericPasswordSchema.h"

#include <type_traits>
#include <utility>

namespace secretservice {

namespace {

/// What `finish` makes of the answer to the call that `begin` makes; nothing, with the reason, when
/// there is no answer or it is an error.
template <typename Begin, typename Finish>
std::optional<std::invoke_result_t<Finish, GAsyncResult*, GError**>> answerTo(
    SecretServiceSession& session, std::string& reason, const Begin& begin, const Finish& finish
)
{
    const AsyncCall call;
    begin(call.data());
    GAsyncResult* result = session.wait(call, reason);
    if (result == nullptr) {
        return std::nullopt;
    }
    Error error;
    auto answer = finish(result, error.out());
    if (error.isSet()) {
        reason = error.message();
        return std::nullopt;
    }
    return answer;
}

/// False, with a reason, also for an answer that denies without an error.
bool isDone(const std::optional<gboolean>& answer, std::string& reason)
{
    if (answer == FALSE) {
        reason = Error().message();
    }
    return answer == TRUE;
}

} // namespace

std::optional<ObjectListPtr> searchItems(
    SecretServiceSession& session,
    GHashTable* attributes,
    SecretSearchFlags flags,
    std::string& reason
)
{
    return answerTo(
        session,
        reason,
        [&](gpointer data) {
            secret_service_search(
                session.service(),
                &genericPasswordSchema(),
                attributes,
                flags,
                session.cancellable(),
                AsyncCall::finished,
                data
            );
        },
        [&](GAsyncResult* result, GError** error) {
            return ObjectListPtr(secret_service_search_finish(session.service(), result, error));
        }
    );
}

std::optional<ObjectPtr<SecretCollection>>
findDefaultCollection(SecretServiceSession& session, std::string& reason)
{
    return answerTo(
        session,
        reason,
        [&](gpointer data) {
            secret_collection_for_alias(
                session.service(),
                SECRET_COLLECTION_DEFAULT,
                SECRET_COLLECTION_NONE,
                session.cancellable(),
                AsyncCall::finished,
                data
            );
        },
        [](GAsyncResult* result, GError** error) {
            return ObjectPtr<SecretCollection>(secret_collection_for_alias_finish(result, error));
        }
    );
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
    const auto loaded = answerTo(
        session,
        reason,
        [&](gpointer data) {
            secret_service_load_collections(
                session.service(), session.cancellable(), AsyncCall::finished, data
            );
        },
        [&](GAsyncResult* result, GError** error) {
            return secret_service_load_collections_finish(session.service(), result, error);
        }
    );
    if (!loaded.has_value()) {
        return std::nullopt;
    }
    return ObjectListPtr(secret_service_get_collections(session.service()));
}

bool unlockObjects(SecretServiceSession& session, GList* objects, std::string& reason)
{
    const auto unlocked = answerTo(
        session,
        reason,
        [&](gpointer data) {
            secret_service_unlock(
                session.service(), objects, session.cancellable(), AsyncCall::finished, data
            );
        },
        [&](GAsyncResult* result, GError** error) {
            return secret_service_unlock_finish(session.service(), result, nullptr, error);
        }
    );
    return unlocked.has_value();
}

bool storeItem(
    SecretServiceSession& session,
    const std::string& account,
    SecretValue* value,
    std::string& reason
)
{
    const AttributesPtr attributes = accountAttributes(account);
    const auto stored = answerTo(
        session,
        reason,
        [&](gpointer data) {
            secret_service_store(
                session.service(),
                &genericPasswordSchema(),
                attributes.get(),
                SECRET_COLLECTION_DEFAULT,
                account.c_str(),
                value,
                session.cancellable(),
                AsyncCall::finished,
                data
            );
        },
        [&](GAsyncResult* result, GError** error) {
            return secret_service_store_finish(session.service(), result, error);
        }
    );
    return isDone(stored, reason);
}

bool deleteItem(SecretServiceSession& session, SecretItem* item, std::string& reason)
{
    const auto deleted = answerTo(
        session,
        reason,
        [&](gpointer data) {
            secret_item_delete(item, session.cancellable(), AsyncCall::finished, data);
        },
        [&](GAsyncResult* result, GError** error) {
            return secret_item_delete_finish(item, result, error);
        }
    );
    return isDone(deleted, reason);
}

} // namespace secretservice
