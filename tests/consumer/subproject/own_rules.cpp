// Code that would not compile, or would warn, under the rules that netpublic's own sources follow.
#include <stdexcept>
#include <typeinfo>

char narrowed(int value);

char narrowed(int value)
{
    try {
        if (typeid(value) != typeid(int))
            throw std::runtime_error("not an int");
        char result = value;
        return result;
    } catch (const std::exception &) {
        return 0;
    }
}
