// The children of the extension header's element.
#ifndef NETPUBLIC_EXTENSION_H
#define NETPUBLIC_EXTENSION_H

#include "ground/node.h"

#include <net_types.h>

namespace netpublic {

// 0, or -1 where the element is not the header's or a child is refused.
int read_extension(Node element, net_ext_t *ext);

} // namespace netpublic

#endif
