// The XML library, without the static constructor that its <iostream> would give every object file.
#ifndef NETPUBLIC_TREE_H
#define NETPUBLIC_TREE_H

#include <istream>
#include <ostream>
#include <string>

#if defined(__GLIBCXX__) && !defined(_GLIBCXX_IOSTREAM)
#define _GLIBCXX_IOSTREAM 1 // libstdc++'s own guard: <tinyxml.h> needs the streams' types, not their objects
#endif
#include <tinyxml.h>

#endif
