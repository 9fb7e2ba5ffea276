// Gives a test program the toolkit's application object for as long as its tests run.
#pragma once

#include <QCoreApplication>

#include <array>
#include <memory>
#include <string>

#include <gtest/gtest.h>

namespace support {

template <typename Application> class QtEnvironment : public testing::Environment
{
public:
    void SetUp() override
    {
        application = std::make_unique<Application>(argumentCount, arguments.data());
    }

    void TearDown() override { application.reset(); }

private:
    std::string name = "tests";
    std::array<char*, 2> arguments{name.data(), nullptr};
    int argumentCount = 1;
    std::unique_ptr<Application> application;
};

} // namespace support
