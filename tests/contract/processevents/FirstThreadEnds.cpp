// A process whose first thread ends at once; the last one does when it hears something on the
// socket whose number is the argument.
#include <charconv>
#include <string_view>
#include <thread>

#include <pthread.h>
#include <unistd.h>

int main(int count, char** arguments)
{
    const std::string_view number = arguments[count - 1];
    int wire = -1;
    std::from_chars(number.data(), number.data() + number.size(), wire);
    std::thread([wire] {
        char heard = 0;
        (void)!::read(wire, &heard, 1);
    }).detach();
    ::pthread_exit(nullptr);
}
