// A test with the agent on a private desktop and somebody who uses its windows. Steps that cannot
// be done end the test; when it fails it says what there was to see.
#pragma once

#include "agent/AgentSession.h"
#include "person/Person.h"
#include "person/Screens.h"

#include <filesystem>
#include <memory>
#include <optional>
#include <string>
#include <vector>

#include <gtest/gtest.h>

namespace agent {

namespace screens = person::screens;

class InterfaceTest : public ::testing::Test
{
protected:
    /// The desktop, with assistive tools and without any application.
    void SetUp() override;
    void TearDown() override;

    desktop::Desktop& desk() { return session->desk; }

    /// Lets the applications that are installed here be seen as well, by programs started later.
    void showInstalledApplications();

    /// Starts the agent as its user does and waits until its popover has the keyboard. Whatever is
    /// stored is stored before.
    void startAgent();

    /// The same with `PASSWORD` as the password, and these applications protected.
    void startWithPassword(const std::vector<std::string>& applications = {});

    /// Types into the popover's gate and submits.
    void enterAtGate(const std::string& password);

    /// Until the content shows.
    void unlock();

    /// Opens the popover again as a second start of the program does it.
    void openPopover();

    void choose(const person::Control& entryOfMenu);

    /// Clicks on the ground of a window, so that it gets the keyboard.
    void turnTo(const std::string& window);

    /// Types both into the password window and confirms.
    void enterNewPassword(const std::string& password, const std::string& confirmation);

    /// Waits for the alert with exactly these texts, and answers it.
    void answerAlert(const std::string& title, const std::string& message);

    /// Makes an application known to the desktop that has a window.
    void addApplication(
        const std::string& identifier, const std::string& name, const std::string& categories = {}
    );
    std::filesystem::path programOf(const std::string& identifier);
    desktop::ChildProcess startApplication(const std::string& identifier);

    /// What the keyring keeps under a key such as "Password".
    std::optional<std::string> setting(const std::string& key);
    void waitForSetting(const std::string& key, const std::string& value);

    std::unique_ptr<AgentSession> session;
    std::unique_ptr<person::Person> user;
};

} // namespace agent
