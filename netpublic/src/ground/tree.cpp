#include "ground/tree.h"

#include <cstring>
#include <new>

namespace netpublic {
namespace {

// Room for a text and its terminator, or null.
char *new_text(std::size_t length) noexcept
{
    try {
        return static_cast<char *>(::operator new(length + 1));
    } catch (...) {
        return nullptr;
    }
}

// Links such a text, and gives its room back.
int link_new_text(TiXmlNode *parent, const char *name, char *text, std::size_t length) noexcept
{
    text[length] = '\0';
    const int result = link_text(parent, name, text);
    ::operator delete(text);
    return result;
}

} // namespace

TiXmlElement *new_element(const char *name, const char *version) noexcept
{
    TiXmlElement *element = nullptr;
    try {
        element = new TiXmlElement(name);
        if (version != nullptr)
            element->SetAttribute(version, "1.1");
        return element;
    } catch (...) {
        delete element;
        return nullptr;
    }
}

TiXmlElement *link_element(TiXmlNode *parent, const char *name, const char *version) noexcept
{
    TiXmlElement *element = parent != nullptr ? new_element(name, version) : nullptr;
    if (element != nullptr)
        parent->LinkEndChild(element);
    return element;
}

int link_text(TiXmlNode *parent, const char *name, const char *text) noexcept
{
    if (parent == nullptr)
        return -1;
    TiXmlElement *element = nullptr;
    try {
        element = new TiXmlElement(name);
        element->LinkEndChild(new TiXmlText(text));
    } catch (...) {
        delete element;
        return -1;
    }
    parent->LinkEndChild(element);
    return 0;
}

int link_text(TiXmlNode *parent, const char *name, const char *text, std::size_t length) noexcept
{
    char *const ended = new_text(length);
    if (ended == nullptr)
        return -1;
    std::memcpy(ended, text, length);
    return link_new_text(parent, name, ended, length);
}

int link_made(TiXmlNode *parent, const char *name, std::size_t length, MakeText make, const void *context) noexcept
{
    char *const text = new_text(length);
    if (text == nullptr)
        return -1;
    make(context, text, length);
    return link_new_text(parent, name, text, length);
}

int remove_children(TiXmlNode *parent, const TiXmlNode *last) noexcept
{
    while (parent->LastChild() != last)
        parent->RemoveChild(parent->LastChild());
    return -1;
}

int print_document(TiXmlPrinter &printer, TiXmlElement *root) noexcept
{
    if (root == nullptr)
        return -1;
    TiXmlDocument document;
    TiXmlNode *declaration = nullptr;
    try {
        declaration = new TiXmlDeclaration("1.0", "UTF-8", "");
    } catch (...) {
        delete root;
        return -1;
    }
    document.LinkEndChild(declaration);
    document.LinkEndChild(root);
    try {
        printer.SetIndent("");
        document.Accept(&printer);
        return 0;
    } catch (...) {
        return -1;
    }
}

} // namespace netpublic
