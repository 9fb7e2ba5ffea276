#include "linux/process/StreamLog.h"

#include <algorithm>
#include <array>
#include <chrono>
#include <csignal>
#include <sstream>
#include <string>
#include <thread>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <unistd.h>

namespace {

/// A pipe whose two ends close with it.
class Pipe
{
public:
    Pipe() { EXPECT_EQ(pipe2(ends.data(), O_CLOEXEC), 0); }

    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    Pipe(Pipe&&) = delete;
    Pipe& operator=(Pipe&&) = delete;

    ~Pipe()
    {
        closeReader();
        closeWriter();
    }

    [[nodiscard]] int writer() const { return ends[1]; }

    void closeReader() { closeEnd(0); }

    void closeWriter() { closeEnd(1); }

    void read(std::size_t count)
    {
        std::string part(count, ' ');
        EXPECT_EQ(::read(ends[0], part.data(), count), static_cast<ssize_t>(count));
    }

    /// Everything that was written, until no writer is left.
    std::string readAll()
    {
        std::string all;
        std::array<char, 4096> part{};
        ssize_t count = 0;
        while ((count = ::read(ends[0], part.data(), part.size())) > 0) {
            all.append(part.data(), static_cast<std::size_t>(count));
        }
        return all;
    }

private:
    void closeEnd(std::size_t index)
    {
        if (ends.at(index) != -1) {
            close(ends.at(index));
            ends.at(index) = -1;
        }
    }

    std::array<int, 2> ends{-1, -1};
};

std::vector<std::string> linesOf(const std::string& text)
{
    std::vector<std::string> lines;
    std::istringstream stream(text);
    for (std::string line; std::getline(stream, line);) {
        lines.push_back(line);
    }
    return lines;
}

} // namespace

TEST(StreamLog, LinesGoToTheOutputAndDiagnosticsToTheErrorStream)
{
    Pipe output;
    Pipe error;
    {
        process::StreamLog log(output.writer(), error.writer());
        log.line("Monitoring services started");
        log.diagnostic("no keyring");
    }
    output.closeWriter();
    error.closeWriter();

    EXPECT_EQ(output.readAll(), "Monitoring services started\n");
    EXPECT_EQ(error.readAll(), "no keyring\n");
}

TEST(StreamLog, LinesOfManyThreadsAreNeverTorn)
{
    constexpr std::size_t THREADS = 8;
    constexpr std::size_t LINES = 500;
    Pipe output;
    process::StreamLog log(output.writer(), output.writer());
    std::string all;
    std::thread reader([&] { all = output.readAll(); });
    const auto write = [&log](char letter) {
        for (std::size_t count = 0; count < LINES; ++count) {
            log.line(std::string(100, letter));
        }
    };
    {
        std::vector<std::jthread> writers(THREADS);
        for (std::size_t index = 0; index < THREADS; ++index) {
            writers[index] = std::jthread(write, static_cast<char>('a' + index));
        }
    }
    output.closeWriter();
    reader.join();

    const std::vector<std::string> lines = linesOf(all);
    ASSERT_EQ(lines.size(), THREADS * LINES);
    for (const std::string& line : lines) {
        EXPECT_EQ(line, std::string(100, line.front()));
    }
}

TEST(StreamLog, ANameWithALineBreakDoesNotForgeASecondLine)
{
    Pipe output;
    process::StreamLog log(output.writer(), output.writer());
    log.line("Will start: Calc\nTerminated: Calc");
    output.closeWriter();

    EXPECT_EQ(output.readAll(), "Will start: Calc Terminated: Calc\n");
}

TEST(StreamLog, ANameWithOtherControlsHidesNothing)
{
    Pipe output;
    process::StreamLog log(output.writer(), output.writer());
    log.line("Will start: Calc\rDid start: \x1b[2KM\u00E4h\x7f\tx");
    output.closeWriter();

    EXPECT_EQ(output.readAll(), "Will start: Calc Did start:  [2KM\u00E4h \tx\n");
}

TEST(StreamLog, APipeThatNobodyReadsIsWaitedForOnceAndUsedAgainWhenItIsRead)
{
    constexpr int LINES = 40;
    Pipe output;
    const int size = fcntl(output.writer(), F_SETPIPE_SZ, 4096);
    ASSERT_GT(size, 0);
    process::StreamLog log(output.writer(), output.writer());
    log.line(std::string(static_cast<std::size_t>(size) - 1, 'x'));
    const auto begin = std::chrono::steady_clock::now();
    for (int count = 0; count < LINES; ++count) {
        log.line("no room for this one");
    }
    EXPECT_LT(std::chrono::steady_clock::now() - begin, std::chrono::seconds(1));

    output.read(static_cast<std::size_t>(size));
    log.line("read again");
    output.closeWriter();
    EXPECT_EQ(output.readAll(), "read again\n");
}

TEST(StreamLog, SurvivesAReaderThatWentAway)
{
    static_cast<void>(std::signal(SIGPIPE, SIG_IGN)); // as the program does
    Pipe output;
    Pipe error;
    process::StreamLog log(output.writer(), error.writer());
    output.closeReader();
    log.line("nobody reads this");
    log.diagnostic("still here");
    error.closeWriter();

    EXPECT_EQ(error.readAll(), "still here\n");
}

TEST(StreamLog, DoesNotHangOnAPipeThatNobodyReads)
{
    Pipe output;
    const int size = fcntl(output.writer(), F_SETPIPE_SZ, 4096);
    ASSERT_GT(size, 0);
    process::StreamLog log(output.writer(), output.writer());
    log.line(std::string(static_cast<std::size_t>(size) - 1, 'x'));
    log.line("no room for this one");
    log.line(std::string(100000, 'y'));
    output.closeWriter();

    const std::vector<std::string> lines = linesOf(output.readAll());
    ASSERT_EQ(lines.size(), 1U);
    EXPECT_EQ(lines.front(), std::string(static_cast<std::size_t>(size) - 1, 'x'));
}

TEST(StreamLog, ADescriptorThatIsNotOpenIsNotLeftForOthersToFill)
{
    Pipe error;
    const int closed = dup(error.writer());
    close(closed);
    process::StreamLog log(closed, error.writer());
    const int other = dup(error.writer());
    EXPECT_NE(other, closed);
    log.line("must not reach the other file");
    close(other);
    close(closed);
    error.closeWriter();

    EXPECT_EQ(error.readAll(), "");
}
