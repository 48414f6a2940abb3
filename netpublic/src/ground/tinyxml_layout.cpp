// TinyXML's nodes hold a std::string if TIXML_USE_STL is defined, else a string class of its own. The functions that
// the library calls have the same names either way. This refers to a name that only a TinyXML of the layout seen here
// has: linked with another one, a program fails to link instead of reading the nodes wrongly. Nothing uses it; the
// linker is told to keep it in the shared library.
#include "tree.h"

#ifdef TIXML_USE_STL
std::istream &operator>>(std::istream &, TiXmlNode &);
using Evidence = std::istream &(*)(std::istream &, TiXmlNode &);
static constexpr Evidence evidence = operator>>;
#else
using Evidence = const void *;
static constexpr Evidence evidence = &TiXmlString::npos;
#endif

extern "C" {
extern const Evidence netpublic_and_tinyxml_need_the_same_TIXML_USE_STL;
const Evidence netpublic_and_tinyxml_need_the_same_TIXML_USE_STL = evidence;
}
