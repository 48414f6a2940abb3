#include "reading/lost.h"

#include "reading/capture.h"
#include "reading/compare.h"
#include "reading/payload.h"
#include "reading/secrets.h"
#include "reading/shapes.h"

#include <net_public.h>

#include <algorithm>
#include <cstring>

namespace netparam {
namespace {

bool same_bytes(const void *a, const void *b, const Item &item)
{
    return std::memcmp(static_cast<const char *>(a) + item.offset, static_cast<const char *>(b) + item.offset,
                       item.bytes) == 0;
}

std::string shown(const Item *item, bool show_secrets)
{
    return item == nullptr                                                                        ? "nothing"
           : !show_secrets && is_secret(item->name) && item->items.empty() && !item->text.empty() ? hidden
                                                                                                  : item->text;
}

// Members are set to zero one after another: what the writer makes no other body of does not reach it.
class Search {
public:
    Search(const Session &session, const Options &options, const std::string &body, const Session &fresh)
        : session_(session), options_(options), body_(body), data_(static_cast<char *>(session.envelope().data)),
          initial_(static_cast<const char *>(fresh.envelope().data)), size_(session.allocated())
    {
        comparable_ = initial_ != nullptr && fresh.allocated() == size_;
    }

    struct Count {
        std::size_t set = 0, lost = 0;
    };
    // A record is named as a whole when nothing of it is left.
    Count collect(const std::vector<Item> &items, const std::string &path, std::vector<Lost> &lost) const
    {
        Count all;
        for (const Item &item : items) {
            std::vector<Lost> inner;
            const Count count = item.items.empty()
                                    ? Count{is_set(item), is_set(item) && !reaches_body(item)}
                                    : collect(item.items, item.list ? path : path + item.name + "/", inner);
            all.set += count.set;
            all.lost += count.lost;
            if (item.items.empty() && count.lost > 0)
                lost.push_back({path + item.name, shown(&item, options_.show_secrets), "does not reach the body"});
            else if (count.lost > 1 && count.lost == count.set)
                lost.push_back({path + item.name, std::to_string(count.lost) + " members", "does not reach the body"});
            else
                lost.insert(lost.end(), inner.begin(), inner.end());
        }
        return all;
    }

private:
    bool is_set(const Item &item) const
    {
        return item.bytes > 0 && item.offset + item.bytes <= size_ && !all_zero(data_ + item.offset, item.bytes) &&
               !(comparable_ && same_bytes(data_, initial_, item));
    }
    bool reaches_body(const Item &item) const
    {
        const std::string kept(data_ + item.offset, item.bytes);
        std::memset(data_ + item.offset, 0, item.bytes);
        const bool other = session_.body_text() != body_;
        std::memcpy(data_ + item.offset, kept.data(), item.bytes);
        return other;
    }

    const Session &session_;
    const Options &options_;
    const std::string &body_;
    char *const data_;
    const char *const initial_;
    const std::size_t size_;
    bool comparable_;
};

} // namespace

std::vector<Lost> lost_members(const Session &session, const Options &options, const TiXmlElement &body)
{
    const std::vector<Item> items = payload_items(session, true);
    std::vector<Lost> lost;
    Session back(session.entry(), options); // with the payload as the initialiser leaves it
    if (!back.read_extension())
        return lost;
    back.prepare();
    {
        Capture capture; // some lines are logged whatever the masks say
        const std::string text = session.body_text();
        Search(session, options, text, back).collect(items, "", lost);
    }
    if (!back.entry().parses() || !back.parse(body))
        return lost;
    const std::vector<Item> read = payload_items(back, true);
    const std::vector<Difference> different = differences(items, read);
    // What the parser sets by itself, or makes of other members, is not lost.
    const auto comes_back = [&](const Lost &one) {
        return std::none_of(different.begin(), different.end(),
                            [&](const Difference &difference) { return lies_within(difference.path, one.path); });
    };
    lost.erase(std::remove_if(lost.begin(), lost.end(), comes_back), lost.end());
    for (const Difference &difference : different) {
        const auto told = [&](const Lost &one) { return lies_within(difference.path, one.path); };
        if (std::none_of(lost.begin(), lost.end(), told))
            lost.push_back({difference.path, shown(difference.a, options.show_secrets),
                            "comes back as " + shown(difference.b, options.show_secrets)});
    }
    return lost;
}

} // namespace netparam
