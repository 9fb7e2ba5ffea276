// How the editing of a text ended.
#pragma once

namespace toolkit {

enum class TextMovement
{
    Other = 0,
    Return = 0x10,
    Tab = 0x11,
    Backtab = 0x12,
};

} // namespace toolkit
