// The settings of a user whose keychain is empty.
#pragma once

#include "fakes/Applications.h"
#include "fakes/FakePlatform.h"
#include "fakes/Secrets.h"
#include "storage/ConfigurationAndPreferencesService.h"

#include <functional>
#include <memory>
#include <string>
#include <vector>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

class SettingsTest : public testing::Test
{
protected:
    std::vector<std::string> namesOfLockedApplications()
    {
        std::vector<std::string> names;
        for (const auto& entity : settings.getLockedApplications()) {
            names.push_back(entity->name);
        }
        return names;
    }

    int countChanges(const std::function<void()>& action)
    {
        auto count = std::make_shared<int>(0);
        settings.addOnConfigurationChangeEvent([count] { ++*count; });
        action();
        return *count;
    }

    fakes::FakePlatform platform;
    storage::ConfigurationAndPreferencesService settings;
};
