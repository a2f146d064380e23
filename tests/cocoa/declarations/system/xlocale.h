// What the C++ standard library expects of macOS's locale functions.
#pragma once

#include <locale.h>
#include <stdlib.h>
#include <wchar.h>

extern "C" {
int sscanf_l(const char* text, locale_t locale, const char* format, ...);
int snprintf_l(char* text, size_t size, locale_t locale, const char* format, ...);
int asprintf_l(char** text, locale_t locale, const char* format, ...);
}
