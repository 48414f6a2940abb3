// Replays the seeds of the fuzz targets, and every input that once broke a promise, through the bodies
// of the targets: in each build that runs the tests, not only under the fuzzer.
#include <gtest/gtest.h>
#include <net_public.h>
#include <promises.h>
#include <session.h>
#include <targets.h>

#include <cstring>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>
#include <vector>

namespace {

std::vector<std::string> promises_broken;

void remember(const char *promise, const std::string &what)
{
    promises_broken.push_back(std::string(promise) + " " + what);
}

class ReplayTest : public testing::TestWithParam<fuzz::Target> {
protected:
    void SetUp() override
    {
        promises_broken.clear();
        before_ = fuzz::on_broken(remember);
    }
    void TearDown() override
    {
        fuzz::on_broken(before_);
    }

    void replay(const std::string &name, const std::string &input)
    {
        GetParam().run(reinterpret_cast<const std::uint8_t *>(input.data()), input.size());
        ++count_;
        EXPECT_EQ(promises_broken, std::vector<std::string>{}) << GetParam().name << ", " << name;
        promises_broken.clear();
    }

    int count_ = 0;

private:
    fuzz::Broken before_ = nullptr;
};

TEST_P(ReplayTest, Seeds)
{
    GetParam().seeds([this](const std::string &name, const std::string &input) {
        replay(name, input);
        if (GetParam().body == fuzz::Body::none)
            return;
        for (unsigned seed = 1; seed <= 2; ++seed)
            replay(name + ", changed", fuzz::mutated(GetParam(), reinterpret_cast<const std::uint8_t *>(input.data()),
                                                     input.size(), GetParam().longest, seed * 7919));
    });
    EXPECT_GE(count_, 5);
}

TEST_P(ReplayTest, Regressions)
{
    std::error_code none;
    for (const auto &entry :
         std::filesystem::directory_iterator(std::string(NETPUBLIC_REGRESSIONS_DIR "/") + GetParam().name, none)) {
        std::ifstream file(entry.path(), std::ios::binary);
        std::stringstream content;
        content << file.rdbuf();
        replay(entry.path().filename().string(), content.str());
    }
}

// The guards bite: in front, behind, and behind by a whole record.
TEST(GuardTest, OverrunsAreFound)
{
    for (const std::ptrdiff_t at : {-1, 100, 1500}) {
        auto *block = static_cast<unsigned char *>(fuzz::guarded_allocate(100));
        EXPECT_TRUE(fuzz::guards_intact(block));
#ifdef NETPUBLIC_GUARDS_POISONED
        EXPECT_DEATH(*const_cast<volatile unsigned char *>(block + at) = 1, "use-after-poison") << at;
#else
        const unsigned char before = block[at];
        block[at] = static_cast<unsigned char>(~before);
        EXPECT_FALSE(fuzz::guards_intact(block)) << at;
        block[at] = before;
#endif
        fuzz::guarded_release(block);
    }
}

// What the walk over a record must notice, on a record that a host could have spoilt.
TEST(PromiseTest, CountsAndTextsAreLookedAt)
{
    const netpublic::Message *message = nullptr;
    for (const netpublic::Message *each : fuzz::messages())
        if (std::strcmp(each->name, "ipc-version") == 0)
            message = each;
    ASSERT_NE(message, nullptr);
    net_ipc_ver_list_v20_t list{};
    const fuzz::Broken before = fuzz::on_broken(remember);
    promises_broken.clear();
    fuzz::check_record(*message->read, &list);
    EXPECT_EQ(promises_broken.size(), 0u);
    list.count = static_cast<int>(sizeof list.entries / sizeof list.entries[0]) + 1;
    fuzz::check_record(*message->read, &list);
    EXPECT_EQ(promises_broken.size(), 1u);
    list.count = 1;
    std::memset(&list.entries[0], 'x', sizeof list.entries[0]);
    fuzz::check_record(*message->read, &list);
    EXPECT_GT(promises_broken.size(), 1u);
    fuzz::on_broken(before);
}

INSTANTIATE_TEST_SUITE_P(Targets, ReplayTest, testing::ValuesIn(fuzz::targets()),
                         [](const auto &target) { return std::string(target.param.name); });

} // namespace
