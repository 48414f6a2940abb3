// The list of all initialisers, for tools and tests; the library itself has no use for it.
#ifndef NETPUBLIC_CATALOGUE_H
#define NETPUBLIC_CATALOGUE_H

#include <net_public.h>

namespace netpublic {

struct Initialiser {
    const char *name;
    int id;            // -1 when the initialiser does nothing
    unsigned int size; // of the record that `dataSize` speaks of; 0 without a payload
    int (*function)(net_param_t *, net_ext_t *);
};

inline constexpr Initialiser initialisers[] = {
#define INITIALISER(name, id, payload, extra, failure) {#name, id, sizeof(payload), name},
#define DEVIATION(name, id, payload, extra, failure) {#name, id, sizeof(payload), name},
#define STAMP_ONLY(name, id) {#name, id, 0, name},
#define NOTHING(name) {#name, -1, 0, name},
#include "catalogue.inc"
};

} // namespace netpublic

#endif
