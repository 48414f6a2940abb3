// The text route: the messages' own parsers and writers, handed a scanned text or a text writer in place of a tree.
#include "ground/element.h"
#include "ground/log.h"
#include "text/scanner.h"

#include <net_public.h>

#include <cstring>

using namespace netpublic;

namespace {

// Null where there is none: then the parser says so.
Node message_element(Node root)
{
    if (std::strcmp(root.name(), "body") != 0)
        return root;
    Node child = root.first_child();
    while (child && !child.is_element())
        child = child.next_sibling();
    return child;
}

// Where the reading ended, which the parser's stack must not pay for. -1.
[[gnu::noinline]] int refuse(const ScanError &error)
{
    log_error(NET_HERE, "xml parse failed:%s line(%u) column(%u)\n", fault_text(error.fault), error.line, error.column);
    return -1;
}

} // namespace

int net_text_x2s(int (*x2s)(net_param_t *, TiXmlNode *), net_param_t *param, char *text, unsigned int length)
{
    if (x2s == nullptr || text == nullptr)
        return -1;
    ScannedText scanned;
    if (scanned.scan(text, length) == 0)
        return x2s(param, message_element(scanned.root()).handle());
    return refuse(scanned.error());
}

int net_text_s2x(int (*s2x)(net_param_t *, TiXmlElement *), net_param_t *param, char *text, unsigned int size)
{
    if (s2x == nullptr || (text == nullptr && size != 0))
        return -1;
    TextWriter writer(text, size);
    if (s2x(param, writer.top().handle()) == 0)
        return static_cast<int>(writer.finish());
    if (size != 0)
        *text = '\0';
    return -1;
}
