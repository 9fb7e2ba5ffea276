// The index of applications with this program and its helper in front of it: they are known by
// where they stand, whether or not they are installed as applications. Any thread.
#pragma once

#include "linux/workspace/ApplicationIndex.h"
#include "platform/Bundles.h"

namespace workspace {

class OwnPrograms final : public ApplicationIndex
{
public:
    /// `others` must outlive this.
    OwnPrograms(const platform::Bundle& mainBundle, ApplicationIndex& others);

    KnownApplicationPtr ofProcess(const proc::ProcessFacts& facts) const override;
    KnownApplicationPtr ofWindow(const WindowFacts& facts) const override;
    KnownApplicationPtr ofCopy(const proc::ProcessFacts& facts) const override;
    KnownApplicationPtr withIdentifier(const std::string& identifier) const override;
    KnownApplicationPtr ofEntry(const std::string& entry) const override;
    bool plays(const std::string& identifier, const std::string& role) const override;
    std::set<std::string> executables() const override;
    bool mayBeApplication(const std::string& executable) const override;
    bool shareProgram(const std::string& identifier, const std::string& other) const override;
    bool mayHandOver(const std::string& identifier, const std::string& other) const override;
    void learn(const proc::ProcessFacts& facts, const std::string& identifier) override;

    /// The login-item helper.
    const KnownApplicationPtr& helper() const { return loginItem; }

private:
    KnownApplicationPtr own;
    KnownApplicationPtr loginItem;
    ApplicationIndex& others;
};

} // namespace workspace
