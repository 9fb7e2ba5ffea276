// Takes the pictures of docs/screenshots. The one argument is the folder for them.

#include "screenshots/Gallery.h"

#include <exception>
#include <iostream>

int main(int count, char** arguments)
{
    if (count != 2) {
        std::cerr << "usage: tarvel-screenshots PICTURES\n";
        return 2;
    }
    try {
        for (const bool dark : {false, true}) {
            for (const int scale : {1, 2}) {
                screenshots::Gallery(arguments[1], {dark, scale}).takeAll();
            }
        }
        return 0;
    } catch (const std::exception& failure) {
        std::cerr << "tarvel-screenshots: " << failure.what() << '\n';
        return 1;
    }
}
