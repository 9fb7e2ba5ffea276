// Shows on a desktop of its own what Tarvel does. The first argument is the folder for pictures;
// with "stay" as the second one the desktop is left to a browser afterwards.

#include "tour/Tour.h"

#include <exception>
#include <iostream>
#include <string_view>

int main(int count, char** arguments)
{
    const bool stays = count == 3 && std::string_view(arguments[2]) == "stay";
    if (count != 2 && !stays) {
        std::cerr << "usage: tarvel-tour PICTURES [stay]\n";
        return 2;
    }
    try {
        tour::Tour tour(arguments[1]);
        const bool held = tour.run();
        if (held && stays) {
            tour.stay();
        }
        return held ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "tarvel-tour: " << failure.what() << '\n';
        return 1;
    }
}
