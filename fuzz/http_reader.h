// The request reader of "compose serve" as the fuzz target drives it, in-process; the
// regression test of the server replays every input that once made it fail through the
// same function.
#pragma once

#include <cstddef>
#include <cstdint>

#include "readers.h"

namespace fuzz {

// Bytes as a client sends them -> the request head, read whole and as the server reads it
// while they arrive (cut at points taken from the bytes themselves), then answered by the
// server's routes. Unexpected: the cut reading disagrees with the whole one (a prefix that
// is complete or refused must read the same as the whole), a bound not held, or an
// exception.
Outcome read_http(const uint8_t* data, size_t size);

}  // namespace fuzz
