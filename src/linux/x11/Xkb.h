// The keyboard extension's header, which names a field with a keyword of C++.
#pragma once

#define explicit explicitComponents
#include <xcb/xkb.h>
#undef explicit
