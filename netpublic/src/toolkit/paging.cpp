#include "toolkit/paging.h"

#include "engine/writing.h"
#include "toolkit/printed_size.h"
#include "values/values.h"

#include <cstring>

namespace netpublic {

int append_page(const Table &page, const void *records, int first, int count, Element parent, int budget,
                std::size_t *size)
{
    const Row &list = page.row(0);
    const Table &item = *page.ref(list.ref).table;
    const auto *record = static_cast<const char *>(records) + static_cast<std::size_t>(first) * item.record_size;
    const Mark start = mark_end(parent);
    const Element root = append_root(parent, page.root(), "version");
    if (!root)
        return -1;
    *size = std::strlen("< version=\"1.1\" />\n") + std::strlen(page.root());
    int index = first;
    for (; index < count; ++index, record += item.record_size) {
        const Mark mark = mark_end(root);
        if (write_record(item, record, append_element(root, page.key(list))) != 0)
            return remove_since(parent, start);
        *size += printed_since(root, mark);
        if (*size > static_cast<std::size_t>(budget)) {
            remove_since(root, mark);
            if (append_int(root, page.key(page.row(1)), 1) != 0)
                return remove_since(parent, start);
            break;
        }
    }
    return index;
}

} // namespace netpublic
