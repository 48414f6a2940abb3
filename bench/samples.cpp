#include "samples.h"

#include <net_host_standin.h>
#include <net_public.h>
#include <tinyxml.h>

#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <fstream>
#include <sstream>

namespace bench {
namespace {

constexpr std::size_t padding = 8;

std::string file_text(const std::string &name, bool required)
{
    std::ifstream file(NETPUBLIC_EXAMPLES_DIR "/" + name + ".xml");
    require(file.good() || !required, "no such example", name.c_str());
    std::stringstream text;
    text << file.rdbuf();
    return text.str();
}

// An example as a tree that can be enlarged.
class Example {
public:
    explicit Example(const char *name) : name_(name)
    {
        tree_.Parse(padded(file_text(name, true)).c_str());
        require(!tree_.Error(), "not well formed", name);
    }
    TiXmlElement *message()
    {
        return message_of(tree_);
    }
    TiXmlElement *child(TiXmlElement *parent, const char *name)
    {
        TiXmlElement *found = parent->FirstChildElement(name);
        require(found != nullptr, name, name_);
        return found;
    }
    void set(TiXmlElement *parent, const char *name, const std::string &text)
    {
        TiXmlElement *element = child(parent, name);
        element->Clear();
        element->LinkEndChild(new TiXmlText(text.c_str()));
    }
    std::string text() const
    {
        TiXmlPrinter printer;
        printer.SetIndent("    ");
        tree_.Accept(&printer);
        return printer.Str();
    }
    // Repeats the message's elements of this name, one after the other, until there are so many.
    std::vector<TiXmlElement *> repeat(const char *name, std::size_t count)
    {
        std::vector<TiXmlElement *> items;
        for (auto *item = child(message(), name); item != nullptr; item = item->NextSiblingElement(name))
            items.push_back(item);
        for (std::size_t i = 0; items.size() < count; ++i)
            items.push_back(message()->InsertAfterChild(items.back(), *items[i])->ToElement());
        return items;
    }

private:
    const char *name_;
    TiXmlDocument tree_;
};

std::string support_of_64_channels()
{
    Example support("support_16_channels");
    support.set(support.message(), "channelNum", "64");
    const auto items = support.repeat("item", NET_SUPPORT_CHANNELS);
    for (std::size_t i = 0; i < items.size(); ++i)
        support.set(items[i], "chnID", std::to_string(i));
    return support.text();
}

std::string timelapse_of_128_files()
{
    constexpr std::size_t files = 128;
    Example result("timelapse_search_films");
    result.set(result.message(), "totalNum", std::to_string(files));
    result.repeat("item", files);
    return result.text();
}

// The largest grid, with blocks of watched cells.
std::string motion_with_full_grid()
{
    constexpr int columns = NET_GRID_COLUMNS, rows = NET_GRID_ROWS;
    std::vector<unsigned char> cells;
    for (int row = 0; row < rows; ++row)
        for (int column = 0; column < columns; ++column)
            cells.push_back((row / 7 + column / 11) % 3 != 0);
    std::string table(columns * rows / 4, '\0');
    table.resize(
        static_cast<std::size_t>(EncodeBinaryArrayToBase64(cells.data(), &table[0], columns * rows, columns * rows)));

    Example motion("motion_request");
    motion.set(motion.message(), "width", std::to_string(columns));
    motion.set(motion.message(), "height", std::to_string(rows));
    TiXmlElement *scope = motion.child(motion.message(), "scope");
    motion.set(scope, "columns", std::to_string(columns));
    motion.set(scope, "rows", std::to_string(rows));
    motion.set(scope, "valueTable", table);
    return motion.text();
}

std::string text_of(const std::string &name)
{
    if (name == "support_64_channels")
        return support_of_64_channels();
    if (name == "timelapse_128_files")
        return timelapse_of_128_files();
    if (name == "motion_full_grid")
        return motion_with_full_grid();
    return file_text(name, true);
}

std::string extension_of(const std::string &name)
{
    return file_text(name.substr(0, name.find('_')) + "_extension", false);
}

// The encoding list has no message writer: the host pages through it. Here it asks for all at once.
int write_encoding_list(net_param_t *param, TiXmlElement *parent)
{
    constexpr int plenty = 1000000;
    int cursor = 0;
    return xml_enc_info_list_s2x(static_cast<net_stream_info_v20_t *>(param->data), static_cast<int>(param->reserved1),
                                 parent, &cursor, plenty);
}

std::vector<Sample> all_samples()
{
    std::vector<Sample> all;
#define MESSAGE(family, example, initialise, parse, write)                                                             \
    all.push_back({#family, #example, initialise, 0, parse, write, text_of(#example), extension_of(#example)});
#define HOST_MESSAGE(family, example, payload, parse, write)                                                           \
    all.push_back(                                                                                                     \
        {#family, #example, nullptr, sizeof(payload), parse, write, text_of(#example), extension_of(#example)});
#include "messages.inc"
#undef MESSAGE
#undef HOST_MESSAGE
    return all;
}

} // namespace

void require(bool condition, const char *what, const char *whose)
{
    if (condition)
        return;
    std::fprintf(stderr, "%s: %s\n", whose, what);
    std::exit(1);
}

void complete(const Sample &sample, net_param_t *param)
{
    if (sample.write != net_support_s2x)
        return;
    auto *support = static_cast<tag_net_support_v20_t *>(param->data);
    support->count = support->channelNum; // how many channels are described
}

TiXmlElement *message_of(TiXmlDocument &document)
{
    TiXmlElement *root = document.RootElement();
    return root->ValueStr() == "body" ? root->FirstChildElement() : root;
}

std::string padded(const std::string &text)
{
    return text + std::string(padding, '\0');
}

const std::vector<Sample> &samples()
{
    static const std::vector<Sample> all = all_samples();
    return all;
}

Envelope::Envelope(const Sample &sample)
{
    net_ext_t extension = {};
    std::string header = sample.extension;
    require(header.empty() || net_exten_x2s(&header[0], &extension) == 0, "header refused", sample.name);
    const int result = sample.initialise != nullptr ? sample.initialise(&param_, &extension)
                                                    : net_param_init_size_id(&param_, &extension, sample.size, 1);
    require(result == 0 && param_.data != nullptr, "no payload", sample.name);
    fresh_param_ = param_;
    fresh_.assign(static_cast<const char *>(param_.data), net_host_memory().last_size);
}

Envelope::~Envelope()
{
    net_free(&param_.data);
}

void Envelope::restore()
{
    param_ = fresh_param_;
    std::memcpy(param_.data, fresh_.data(), fresh_.size());
}

} // namespace bench
