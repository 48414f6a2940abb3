#include "scan.h"

#include "author.h"
#include "promises.h"
#include "targets.h"
#include "text/scanner.h"

#include <tinyxml.h>

#include <cstring>
#include <memory>
#include <vector>

namespace fuzz {
namespace {

using netpublic::Fault;
using netpublic::Node;

std::string quoted(const char *text)
{
    return text != nullptr ? "\"" + std::string(text) + "\"" : "none";
}

std::string text_difference(const char *what, const char *scanned, const char *parsed)
{
    if (scanned == nullptr || parsed == nullptr ? scanned == parsed : std::strcmp(scanned, parsed) == 0)
        return "";
    return std::string(what) + " " + quoted(scanned) + " instead of " + quoted(parsed);
}

std::string node_difference(Node scanned, const TiXmlNode &parsed)
{
    const TiXmlElement *element = parsed.ToElement();
    std::string difference = text_difference("name", scanned.name(), parsed.Value());
    if (difference.empty())
        difference = text_difference("text", scanned.text(), element != nullptr ? element->GetText() : nullptr);
    if (!difference.empty())
        return difference;
    if (scanned.is_element() != (element != nullptr))
        return "an element or none: " + quoted(parsed.Value());
    if (static_cast<bool>(scanned.first_child()) != (parsed.FirstChild() != nullptr))
        return "children of " + quoted(parsed.Value());
    for (const char *name : {"a", "b", "item"})
        if (static_cast<bool>(scanned.child(name)) != (parsed.FirstChild(name) != nullptr))
            return "a child of the name " + quoted(name);
    return "";
}

// The trees below two elements, node by node.
std::string element_difference(Node scanned, const TiXmlNode *root)
{
    std::vector<Node> above;
    for (const TiXmlNode *parsed = root;;) {
        std::string difference = node_difference(scanned, *parsed);
        if (!difference.empty())
            return difference;
        if (const TiXmlNode *child = parsed->FirstChild()) {
            above.push_back(scanned);
            scanned = scanned.first_child();
            parsed = child;
            continue;
        }
        while (parsed != root && parsed->NextSibling() == nullptr) {
            if (scanned.next_sibling())
                return "a sibling behind the last one";
            scanned = above.back();
            above.pop_back();
            parsed = parsed->Parent();
        }
        if (parsed == root)
            return "";
        scanned = scanned.next_sibling();
        parsed = parsed->NextSibling();
        if (!scanned)
            return "a missing sibling " + quoted(parsed->Value());
    }
}

} // namespace

std::string scan_difference(const std::string &text)
{
    TiXmlDocument document;
    document.Parse((text.c_str() + std::string(xml_padding, '\0')).c_str());

    // Of exact size, for the address sanitizer.
    const std::unique_ptr<char[]> copy(new char[text.size() + 1]);
    std::memcpy(copy.get(), text.c_str(), text.size() + 1);
    netpublic::ScannedText scanned;
    const int result = scanned.scan(copy.get(), static_cast<unsigned int>(text.size()));
    const Fault fault = scanned.error().fault;
    if ((result != 0) != (fault != Fault::none))
        return "result and fault";
    if (fault == Fault::too_many_attributes)
        return document.Error() || extent_of(document).attributes > netpublic::scanned_attributes
                   ? ""
                   : "attributes counted";

    const TiXmlElement *root = document.RootElement();
    if (fault == Fault::no_root)
        return !document.Error() && root == nullptr ? "" : "a root that was not seen";
    std::string difference = text_difference("error", fault != Fault::none ? netpublic::fault_text(fault) : nullptr,
                                             document.Error() ? document.ErrorDesc() : nullptr);
    if (!difference.empty() || fault != Fault::none)
        return difference;

    // Of what stands at the top only the elements are kept.
    Node element = scanned.root();
    for (; root != nullptr && element; root = root->NextSiblingElement(), element = element.next_sibling()) {
        difference = element_difference(element, root);
        if (!difference.empty())
            return difference;
    }
    return root == nullptr && !element ? "" : "elements at the top";
}

void run_scan(const std::uint8_t *data, std::size_t size)
{
    const std::string difference = scan_difference(std::string(reinterpret_cast<const char *>(data), size));
    require(difference.empty(), "P16", difference.c_str());
}

void scan_seeds(const Sink &sink)
{
    for (const Example &example : examples())
        sink("example", example.text.substr(0, 1024));
}

} // namespace fuzz
