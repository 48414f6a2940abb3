// Network settings: what each message stores, refuses and writes.
#include "support.h"

#include <net_public.h>

#include <cstring>
#include <string>

using namespace test;

namespace {

class NetworkTest : public HostTest {};

const std::string x16(16, 'x');

} // namespace

TEST_F(NetworkTest, DdnsProviders)
{
    const struct {
        const char *text;
        int index;
    } cases[] = {
        {"kelvo", 0}, {"DynDNS", 1}, {"peatnuts", 2}, {"3322", 3},  {"NO-IP", 4},    {"", 0},        {"d", 1},
        {"p", 2},     {"33", 3},     {"no", 4},       {"noip", -1}, {"peanuts", -1}, {"kelvos", -1}, {"x", -1},
    };
    for (const auto &each : cases) {
        int index = 99;
        EXPECT_EQ(get_ddns_type_index(&index, each.text), each.index < 0 ? -1 : 0) << each.text;
        EXPECT_EQ(index, each.index < 0 ? 99 : each.index) << each.text;
    }
    int index;
    EXPECT_EQ(get_ddns_type_index(nullptr, "kelvo"), -1);
    EXPECT_EQ(get_ddns_type_index(&index, nullptr), -1);
}
