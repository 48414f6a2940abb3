/**
 * @file net_xml_backup.h
 * Backup of recordings. The library has no messages of this kind so far; the host handles them itself.
 */
#ifndef NET_XML_BACKUP_H
#define NET_XML_BACKUP_H

#include "net_types.h"

#endif
