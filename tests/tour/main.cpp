// Shows on a desktop of its own what Tarvel does. The one argument is the folder for pictures.

#include "tour/Tour.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: tarvel-tour PICTURES\n";
        return 2;
    }
    try {
        tour::Tour tour(arguments[1]);
        return tour.run() ? 0 : 1;
    } catch (const std::exception& failure) {
        std::cerr << "tarvel-tour: " << failure.what() << '\n';
        return 1;
    }
}
