// The user's Secret Service as a store: one item an account in the default collection, label and
// attribute `account` the account's text, of this program's own schema. A locked collection is a
// failure, never "nothing found". An item is written only after the marker says that items are kept
// here, and replaces the one before in one step; what a second collection has of the account goes
// afterwards. One thread; blocks on the bus.
#pragma once

#include "linux/secretservice/ItemStore.h"
#include "linux/secretservice/KeptMarker.h"
#include "linux/secretservice/SecretServiceSession.h"

#include <string>

namespace secretservice {

class SecretServiceStore final : public ItemStore
{
public:
    explicit SecretServiceStore(KeptMarker marker);

    [[nodiscard]] std::string title() const override;
    ItemRead read(const std::string& account) override;
    Failure readAll(Items& items) override;
    Failure put(const std::string& account, const SecretBytes& data, Prompting prompting) override;
    Failure erase(const std::string& account, Prompting prompting) override;
    Failure eraseAll(Prompting prompting) override;
    void cancel() noexcept override;
    void leaveThread() override;

private:
    ItemRead nothingFound();
    Failure prepareWrite(Prompting prompting);
    Failure eraseMatches(GHashTable* attributes, Prompting prompting);
    Failure eraseOtherValues(const std::string& account, const SecretBytes& data);
    Failure noteWhetherEmpty();

    SecretServiceSession session;
    KeptMarker marker;
};

} // namespace secretservice
