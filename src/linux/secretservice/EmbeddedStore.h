// A folder as a store, for a session without a Secret Service: a file an item, sealed with a random
// key that lies beside. It keeps the items from other users and from backups of single files, not
// from a program of the same user. A damaged item is a failure, never "nothing found", which would
// pass for "no password"; it stays until it is written or removed, then beside as "*.damaged". One
// thread at a time; blocks on the disk.
#pragma once

#include "linux/secretservice/ItemSealer.h"
#include "linux/secretservice/ItemStore.h"
#include "linux/secretservice/PrivateFolder.h"
#include "platform/Report.h"

#include <atomic>
#include <filesystem>
#include <optional>
#include <string>

namespace secretservice {

class EmbeddedStore final : public ItemStore
{
public:
    EmbeddedStore(const std::filesystem::path& path, platform::Report report);

    /// Whether the folder holds items, or cannot be looked into.
    static bool holdsItems(const std::filesystem::path& path);

    [[nodiscard]] std::string title() const override;
    ItemRead read(const std::string& account) override;
    Failure readAll(Items& items) override;
    Failure put(const std::string& account, const SecretBytes& data, Prompting prompting) override;
    Failure erase(const std::string& account, Prompting prompting) override;
    Failure eraseAll(Prompting prompting) override;
    void cancel() noexcept override;
    void leaveThread() override;

private:
    Failure loadKey();
    Failure makeKey();
    Failure keepIfDamaged(const std::string& account, const std::string& name);

    PrivateFolder folder;
    platform::Report report;
    std::optional<ItemSealer> sealer; // absent while there is no key and nothing was ever kept
    std::atomic<bool> cancelled = false;
};

} // namespace secretservice
