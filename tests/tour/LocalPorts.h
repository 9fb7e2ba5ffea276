// Ports of 127.0.0.1.
#pragma once

#include <cstdint>

namespace tour {

/// One that nobody listens on: the wanted one where that is so. Throws `desktop::Failure`.
std::uint16_t freePort(std::uint16_t wanted);

bool somebodyListensOn(std::uint16_t port);

} // namespace tour
