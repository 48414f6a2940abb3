#include "reading/routes.h"

#include "model/failure.h"
#include "reading/capture.h"

#include <net_public.h>
#include <tinyxml.h>

#include <cstring>

namespace netparam {
namespace {

[[noreturn]] void differ(const Entry &entry, const std::string &what)
{
    throw Failure(exit_fault, "internal fault: " + entry.name() + " by text and by tree: " + what);
}

bool same_envelope(const net_param_t &a, const net_param_t &b)
{
    return a.inited == b.inited && a.status == b.status && a.paramId == b.paramId && a.reserved0 == b.reserved0 &&
           a.reserved1 == b.reserved1 && a.dataSize == b.dataSize;
}

} // namespace

ByText::ByText(const Entry &entry, const net_param_t &prepared, std::size_t size)
    : entry_(entry), param_(prepared),
      payload_(static_cast<const char *>(prepared.data), prepared.data != nullptr ? size : 0)
{
    if (prepared.data != nullptr)
        param_.data = payload_.data();
}

void ByText::compare_reading(const Document &document, bool accepted, const net_param_t &read)
{
    const TiXmlElement *root = document.tree().RootElement();
    if ((root->ValueStr() == "body" ? root->FirstChildElement() : root) != &document.body())
        return;
    std::string text = document.text(), lines;
    const auto length = static_cast<unsigned int>(text.size());
    const int result = logged(lines, [&] { return net_text_x2s(entry_.message->parse, &param_, text.data(), length); });
    if ((result == 0) != accepted)
        differ(entry_, accepted ? "only the tree is accepted\n" + lines : "only the text is accepted");
    if (!same_envelope(param_, read))
        differ(entry_, "another envelope");
    if (!payload_.empty() && std::memcmp(payload_.data(), read.data, payload_.size()) != 0)
        differ(entry_, "another payload");
}

void compare_writing(const Entry &entry, net_param_t param, bool written, const TiXmlElement *reply)
{
    std::string text, lines, expected;
    if (reply != nullptr) {
        TiXmlPrinter printer;
        printer.SetStreamPrinting();
        reply->Accept(&printer);
        expected = printer.CStr();
    }
    text.resize(expected.size() + 1);
    const int length = logged(lines, [&] {
        return net_text_s2x(entry.message->write, &param, text.data(), static_cast<unsigned int>(text.size()));
    });
    text.pop_back();
    if (length != (written ? static_cast<int>(expected.size()) : -1) || (written && text != expected))
        differ(entry, "another reply");
}

} // namespace netparam
