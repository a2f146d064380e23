#pragma once

#include <stdint.h>

extern "C" int clonefile(const char* from, const char* to, uint32_t flags);
