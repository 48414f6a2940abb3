// Other XML libraries parse the same texts. Each is there only if its package was found.
#include "samples.h"
#include "work.h"

#include <tinyxml.h>

#ifdef NETPUBLIC_HAVE_PUGIXML
#include <pugixml.hpp>
#endif
#ifdef NETPUBLIC_HAVE_LIBXML2
#include <libxml/parser.h>
#include <libxml/tree.h>
#endif

namespace bench {
namespace {

[[maybe_unused]] unsigned count_elements(const TiXmlNode &node)
{
    unsigned count = node.ToElement() != nullptr ? 1 : 0;
    for (const TiXmlNode *child = node.FirstChild(); child != nullptr; child = child->NextSibling())
        count += count_elements(*child);
    return count;
}

// How many elements the library's own parser finds: the others must find as many.
[[maybe_unused]] unsigned elements_of(const Sample &sample)
{
    TiXmlDocument document;
    document.Parse(padded(sample.text).c_str());
    return count_elements(document);
}

[[maybe_unused]] constexpr unsigned documents_at_once = 8;

#ifdef NETPUBLIC_HAVE_PUGIXML
unsigned count_elements(const pugi::xml_node &node)
{
    unsigned count = node.type() == pugi::node_element ? 1 : 0;
    for (const pugi::xml_node &child : node.children())
        count += count_elements(child);
    return count;
}

class ParsePugixml : public Work {
public:
    explicit ParsePugixml(const Sample &sample)
        : Work(documents_at_once), text_(sample.text), documents_(documents_at_once)
    {
        run();
        require(count_elements(documents_[0]) == elements_of(sample), "pugixml sees another tree", sample.name);
        clean();
    }
    void run() override
    {
        for (pugi::xml_document &document : documents_)
            document.load_buffer(text_.data(), text_.size());
    }
    void clean() override
    {
        for (pugi::xml_document &document : documents_)
            document.reset();
    }

private:
    std::string text_;
    std::vector<pugi::xml_document> documents_;
};
#endif

#ifdef NETPUBLIC_HAVE_LIBXML2
unsigned count_elements(const xmlNode *node)
{
    unsigned count = 0;
    for (; node != nullptr; node = node->next)
        count += (node->type == XML_ELEMENT_NODE ? 1 : 0) + count_elements(node->children);
    return count;
}

class ParseLibxml2 : public Work {
public:
    explicit ParseLibxml2(const Sample &sample)
        : Work(documents_at_once), text_(sample.text), documents_(documents_at_once)
    {
        run();
        require(documents_[0] != nullptr && count_elements(documents_[0]->children) == elements_of(sample),
                "libxml2 sees another tree", sample.name);
        clean();
    }
    void run() override
    {
        for (xmlDoc *&document : documents_)
            document = xmlReadMemory(text_.data(), static_cast<int>(text_.size()), nullptr, nullptr,
                                     XML_PARSE_NONET | XML_PARSE_NOBLANKS);
    }
    void clean() override
    {
        for (xmlDoc *document : documents_)
            xmlFreeDoc(document);
    }

private:
    std::string text_;
    std::vector<xmlDoc *> documents_;
};
#endif

} // namespace

void add_parsers([[maybe_unused]] Entries &entries)
{
#ifdef NETPUBLIC_HAVE_PUGIXML
    for (const Sample &sample : samples())
        entries.push_back(
            {std::string("pugixml/") + sample.name, [&] { return std::make_unique<ParsePugixml>(sample); }});
#endif
#ifdef NETPUBLIC_HAVE_LIBXML2
    for (const Sample &sample : samples())
        entries.push_back(
            {std::string("libxml2/") + sample.name, [&] { return std::make_unique<ParseLibxml2>(sample); }});
#endif
}

} // namespace bench
