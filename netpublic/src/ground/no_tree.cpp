// In place of tree.cpp where the firmware has no trees (NETPUBLIC_TREES is off): writing into one fails, and nothing of
// the XML library is linked. Reading a tree needs none of it.
#include "ground/tree.h"

namespace netpublic {

TiXmlElement *new_element(const char * /*name*/, const char * /*version*/) noexcept
{
    return nullptr;
}

TiXmlElement *link_element(TiXmlNode * /*parent*/, const char * /*name*/, const char * /*version*/) noexcept
{
    return nullptr;
}

int link_text(TiXmlNode * /*parent*/, const char * /*name*/, const char * /*text*/) noexcept
{
    return -1;
}

int link_text(TiXmlNode * /*parent*/, const char * /*name*/, const char * /*text*/, std::size_t /*length*/) noexcept
{
    return -1;
}

int link_made(TiXmlNode * /*parent*/, const char * /*name*/, std::size_t /*length*/, MakeText /*make*/,
              const void * /*context*/) noexcept
{
    return -1;
}

int remove_children(TiXmlNode * /*parent*/, const TiXmlNode * /*last*/) noexcept
{
    return -1;
}

int print_document(TiXmlPrinter & /*printer*/, TiXmlElement * /*root*/) noexcept
{
    return -1;
}

} // namespace netpublic
