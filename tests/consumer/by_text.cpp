// A host that answers by text alone, and counts what that takes of its heap. It knows nothing of the XML library.
// Exits 0 when the reply is the expected text and no block but one was taken to read, none to write.
#include <net_host_standin.h>
#include <net_public.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <new>

namespace {

unsigned long news = 0;

int fail(const char *step)
{
    std::printf("%s failed\n", step);
    return 1;
}

} // namespace

void *operator new(std::size_t size)
{
    ++news;
    void *block = std::malloc(size != 0 ? size : 1);
    if (block == nullptr)
        std::abort();
    return block;
}
void operator delete(void *block) noexcept
{
    std::free(block);
}
void operator delete(void *block, std::size_t) noexcept
{
    std::free(block);
}

int main()
{
    char header[] = "<Extension version=\"1.1\"><channelId>3</channelId></Extension>";
    char request[] = "<?xml version=\"1.0\" encoding=\"UTF-8\" ?>\n<body>\n<Ethernet version=\"1.1\">\n"
                     "<ip>192.168.1.9</ip>\n</Ethernet>\n</body>\n";
    const unsigned int length = sizeof request - 1;
    char reply[512];
    net_ext_t extension{};
    net_param_t param{};
    if (net_exten_x2s(header, &extension) != 0 || nets_param_ethernet_init(&param, &extension) != 0)
        return fail("initialising");
    const net_host_blocks before = net_host_memory();
    const unsigned long news_before = news;
    if (net_text_x2s(net_ethernet_x2s, &param, request, length) != 0)
        return fail("reading");
    const net_host_blocks read = net_host_memory();
    const int size = net_text_s2x(net_ethernet_s2x, &param, reply, sizeof reply);
    if (size < 0 || static_cast<std::size_t>(size) != std::strlen(reply))
        return fail("writing");
    const net_host_blocks written = net_host_memory();
    std::printf("%s\nread: %lu block of %u bytes for a text of %u; written: %lu blocks; operator new: %lu times\n",
                reply, read.total - before.total, read.last_size, length, written.total - read.total,
                news - news_before);
    net_free(&param.data);
    if (std::strstr(reply, "<ip>192.168.1.9</ip>") == nullptr)
        return fail("comparing");
    if (read.total - before.total != 1 || read.live != before.live || written.total != read.total ||
        news != news_before)
        return fail("the heap's count");
    if (sizeof(void *) == 4 && read.last_size > length)
        return fail("the block's size");
    return 0;
}
