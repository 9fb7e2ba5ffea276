#include "linux/process/UnixProcessInfo.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <iostream>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

namespace {

using testing::ElementsAre;
using testing::ExitedWithCode;

class ProcessInfo : public testing::Test
{
protected:
    std::array<const char*, 2> words{"/opt/Tarvel.app/Tarvel", "-psn_0_2"};
    process::UnixProcessInfo info{static_cast<int>(words.size()), words.data()};
};

using ProcessInfoDeathTest = ProcessInfo;

} // namespace

TEST_F(ProcessInfo, HasTheArgumentsOfTheStartTheProgramFirst)
{
    EXPECT_THAT(info.arguments(), ElementsAre("/opt/Tarvel.app/Tarvel", "-psn_0_2"));
}

TEST_F(ProcessInfoDeathTest, EndsWithTheStatus)
{
    EXPECT_EXIT(info.exit(3), ExitedWithCode(3), "");
}

TEST_F(ProcessInfoDeathTest, SaysSoBeforeTheEnd)
{
    info.onExit = [](int status) { std::cerr << "ends with " << status << "\n"; };

    EXPECT_EXIT(info.exit(3), ExitedWithCode(3), "^ends with 3\n$");
}

TEST_F(ProcessInfoDeathTest, CleansNothingUpThatOtherThreadsMayBeUsing)
{
    const auto end = [this] {
        std::atexit([] { std::cerr << "cleaned up\n"; });
        info.exit(0);
    };

    EXPECT_EXIT(end(), ExitedWithCode(0), "^$");
}

TEST_F(ProcessInfoDeathTest, LeavesNothingUnwritten)
{
    const auto end = [this] {
        std::setvbuf(stderr, nullptr, _IOFBF, BUFSIZ);
        std::fputs("written", stderr);
        info.exit(0);
    };

    EXPECT_EXIT(end(), ExitedWithCode(0), "^written$");
}
