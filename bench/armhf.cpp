// Parses one of the timed messages, and writes it if it can be written; none, if the name is not known. Says where the
// library lies in memory. For armhf.py.
#include "samples.h"

#include <net_host_standin.h>
#include <net_public.h>
#include <tinyxml.h>

#include <dlfcn.h>

#include <cstdio>

int main(int argc, char **argv)
{
    net_host_reset();
    Dl_info library;
    bench::require(argc == 2 && dladdr(reinterpret_cast<void *>(&net_md_x2s), &library) != 0, "usage", argv[0]);
    std::printf("%p\n", library.dli_fbase);
    for (const auto &sample : bench::samples()) {
        if (argv[1] != std::string("--list") && argv[1] != std::string(sample.name))
            continue;
        std::printf("%s\n", sample.name);
        TiXmlDocument document;
        document.Parse(bench::padded(sample.text).c_str());
        bench::Envelope envelope(sample);
        bench::require(sample.parse(envelope.param(), bench::message_of(document)) == 0, "parsing", sample.name);
        if (sample.write == nullptr)
            continue;
        bench::complete(sample, envelope.param());
        TiXmlElement parent("body");
        bench::require(sample.write(envelope.param(), &parent) == 0, "writing", sample.name);
    }
    return 0;
}
