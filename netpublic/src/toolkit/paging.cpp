#include "toolkit/paging.h"

#include "engine/writing.h"
#include "toolkit/printed_size.h"
#include "values/values.h"

namespace netpublic {
namespace {

// A record as an element of its own; null when it cannot be written.
Element new_item(const Table &item, const char *key, const void *record)
{
    Element element = new_element(key);
    if (write_record(item, record, element) == 0)
        return element;
    delete element;
    return nullptr;
}

// append_page() into a root that nobody else knows.
int fill_page(const Table &page, const void *records, int first, int count, Element root, int budget, std::size_t *size)
{
    const Row &list = page.row(0);
    const Table &item = *page.ref(list.ref).table;
    const auto *record = static_cast<const char *>(records) + static_cast<std::size_t>(first) * item.record_size;
    int index = first;
    for (; index < count; ++index, record += item.record_size) {
        Element element = new_item(item, page.key(list), record);
        if (element == nullptr)
            return -1;
        *size += printed_size(*element);
        if (*size > static_cast<std::size_t>(budget)) {
            delete element;
            return append_int(root, page.key(page.row(1)), 1) != 0 ? -1 : index;
        }
        root->LinkEndChild(element);
    }
    return index;
}

} // namespace

int append_page(const Table &page, const void *records, int first, int count, Element parent, int budget,
                std::size_t *size)
{
    Element root = new_element(page.root(), "version");
    if (root == nullptr)
        return -1;
    *size = printed_size(*root);
    const int end = fill_page(page, records, first, count, root, budget, size);
    if (end < 0)
        delete root;
    else
        parent->LinkEndChild(root);
    return end;
}

} // namespace netpublic
