/**
 * @file net_xml_buzzer.h
 * The buzzer. The library has no messages of this kind so far; the host handles them itself.
 */
#ifndef NET_XML_BUZZER_H
#define NET_XML_BUZZER_H

#include "net_types.h"

#endif
