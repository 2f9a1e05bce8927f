#pragma once

#include <cstddef>

/// How often operator new ran in this test program so far.
std::size_t allocationCount();
