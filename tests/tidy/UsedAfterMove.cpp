// Has to be found fault with: a look at the sources that finds nothing may be one that looks at nothing.

#include <string>
#include <utility>

std::string twice(std::string text)
{
    std::string first = std::move(text);
    return first + text;
}
