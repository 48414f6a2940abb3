#include "ground/tree.h"

namespace netpublic {

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
    try {
        return link_text(parent, name, std::string(text, length).c_str());
    } catch (...) {
        return -1;
    }
}

int link_made(TiXmlNode *parent, const char *name, std::size_t length, MakeText make, const void *context) noexcept
{
    try {
        std::string text(length, '\0');
        make(context, text.data(), length);
        return link_text(parent, name, text.c_str());
    } catch (...) {
        return -1;
    }
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
