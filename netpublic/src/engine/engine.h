// The engine: what the message domains stand on.
#ifndef NETPUBLIC_ENGINE_H
#define NETPUBLIC_ENGINE_H

#include "engine/describe.h"
#include "engine/reading.h"
#include "engine/writing.h"

#endif
