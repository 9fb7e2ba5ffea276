// A process whose first thread ends a second before the last one.
#include <chrono>
#include <thread>

#include <pthread.h>

int main()
{
    std::thread([] { std::this_thread::sleep_for(std::chrono::seconds(1)); }).detach();
    ::pthread_exit(nullptr);
}
