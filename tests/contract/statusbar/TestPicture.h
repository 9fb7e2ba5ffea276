// A picture for items under test: the left half red, half transparent; the right half nothing.
#pragma once

#include "desktop/TemporaryFolder.h"

#include <string>

class TestPicture
{
public:
    TestPicture()
    {
        desktop::writeFile(
            path(),
            R"(<svg xmlns="http://www.w3.org/2000/svg" viewBox="0 0 16 16">)"
            R"(<rect width="8" height="16" fill="#ff0000" fill-opacity="0.5"/></svg>)"
        );
    }

    std::string path() const { return (folder.path() / "picture.svg").string(); }

private:
    desktop::TemporaryFolder folder;
};
