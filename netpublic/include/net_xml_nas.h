/**
 * @file net_xml_nas.h
 * Binding of network storage. The library has no messages of this kind so far; the host handles them itself.
 */
#ifndef NET_XML_NAS_H
#define NET_XML_NAS_H

#include "net_types.h"

#endif
