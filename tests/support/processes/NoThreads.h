// While it lives this process can start no thread: there is no room for the stack of one.
#pragma once

#include <cstddef>

#include <gtest/gtest.h>
#include <pthread.h>

namespace processes {

class NoThreads
{
public:
    NoThreads()
    {
        EXPECT_EQ(::pthread_getattr_default_np(&before), 0);
        setStackSize(TOO_LARGE);
    }

    NoThreads(const NoThreads&) = delete;
    NoThreads& operator=(const NoThreads&) = delete;
    NoThreads(NoThreads&&) = delete;
    NoThreads& operator=(NoThreads&&) = delete;

    ~NoThreads()
    {
        std::size_t size = 0;
        ::pthread_attr_getstacksize(&before, &size);
        setStackSize(size);
        ::pthread_attr_destroy(&before);
    }

private:
    static constexpr std::size_t TOO_LARGE = std::size_t{1} << 50;

    static void setStackSize(std::size_t size)
    {
        pthread_attr_t attributes{};
        EXPECT_EQ(::pthread_getattr_default_np(&attributes), 0);
        ::pthread_attr_setstacksize(&attributes, size);
        EXPECT_EQ(::pthread_setattr_default_np(&attributes), 0);
        ::pthread_attr_destroy(&attributes);
    }

    pthread_attr_t before{};
};

} // namespace processes
