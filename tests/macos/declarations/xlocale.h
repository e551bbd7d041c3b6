#pragma once

// What the C++ library of a Mac calls and this system does not have under these names.
// https://developer.apple.com/library/archive/documentation/System/Conceptual/ManPages_iPhoneOS/man3/xlocale.3.html

#include <locale.h>
#include <stddef.h>

extern "C" {

// https://developer.apple.com/library/archive/documentation/System/Conceptual/ManPages_iPhoneOS/man3/printf_l.3.html
int asprintf_l(char **ret, locale_t loc, const char *format, ...);
int snprintf_l(char *str, size_t size, locale_t loc, const char *format, ...);
// https://developer.apple.com/library/archive/documentation/System/Conceptual/ManPages_iPhoneOS/man3/scanf_l.3.html
int sscanf_l(const char *str, locale_t loc, const char *format, ...);
// https://developer.apple.com/library/archive/documentation/System/Conceptual/ManPages_iPhoneOS/man3/localeconv_l.3.html
struct lconv *localeconv_l(locale_t loc);

} // extern "C"
