// The text route, the same work by the XML library's tree, and what another library needs to parse the text alone.
#include "samples.h"
#include "work.h"

#include <net_public.h>
#include <net_xml_alarm.h>
#include <tinyxml.h>

#ifdef NETPUBLIC_HAVE_PUGIXML
#include <pugixml.hpp>
#endif

#include <algorithm>
#include <cstring>

namespace bench {
namespace {

// Some at once, so that a clock does not matter; payloads and texts should not push each other out of the cache.
unsigned calls_for(const Sample &sample)
{
    constexpr std::size_t wanted = 96 * 1024;
    const std::size_t bytes = sample.text.size() + Envelope(sample).bytes();
    constexpr std::size_t least = 4, most = 32;
    return static_cast<unsigned>(std::clamp(wanted / bytes, least, most));
}

std::string print(const TiXmlNode &node)
{
    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    node.Accept(&printer);
    return printer.Str();
}

// Requests as they come, each in a buffer of its own, into fresh payloads. Preparing them is not counted.
class FromText : public Work {
public:
    explicit FromText(const Sample &sample) : Work(calls_for(sample)), sample_(sample), whole_(padded(sample.text))
    {
        for (unsigned i = 0; i < calls(); ++i) {
            texts_.push_back(whole_);
            envelopes_.push_back(std::make_unique<Envelope>(sample));
        }
    }
    void prepare() override
    {
        for (unsigned i = 0; i < calls(); ++i) {
            std::memcpy(texts_[i].data(), whole_.data(), whole_.size());
            envelopes_[i]->restore();
        }
    }
    void run() override
    {
        for (unsigned i = 0; i < calls(); ++i)
            once(texts_[i], *envelopes_[i]);
    }

protected:
    virtual void once(std::string &text, Envelope &envelope) = 0;
    const Sample &sample() const
    {
        return sample_;
    }
    unsigned int length() const
    {
        return static_cast<unsigned int>(sample_.text.size());
    }

private:
    const Sample &sample_;
    std::string whole_;
    std::vector<std::string> texts_;
    std::vector<std::unique_ptr<Envelope>> envelopes_;
};

class ReadText : public FromText {
public:
    explicit ReadText(const Sample &sample) : FromText(sample)
    {
        Envelope by_text(sample), by_tree(sample);
        std::string text = sample.text;
        TiXmlDocument document;
        document.Parse(padded(sample.text).c_str());
        require(net_text_x2s(sample.parse, by_text.param(), text.data(), length()) == 0, "refused", sample.name);
        require(sample.parse(by_tree.param(), message_of(document)) == 0, "refused", sample.name);
        require(std::memcmp(by_text.param()->data, by_tree.param()->data, by_text.bytes()) == 0, "read otherwise",
                sample.name);
    }

protected:
    void once(std::string &text, Envelope &envelope) override
    {
        net_text_x2s(sample().parse, envelope.param(), text.data(), length());
    }
};

int read_nothing(net_param_t *, TiXmlNode *)
{
    return 0;
}

// The scanner alone: nobody reads the tokens.
class ScanText : public FromText {
public:
    using FromText::FromText;

protected:
    void once(std::string &text, Envelope &envelope) override
    {
        net_text_x2s(read_nothing, envelope.param(), text.data(), length());
    }
};

// Parsed into a tree, read from there, and the tree released.
class ReadTree : public FromText {
public:
    using FromText::FromText;

protected:
    void once(std::string &text, Envelope &envelope) override
    {
        TiXmlDocument document;
        document.Parse(text.c_str());
        sample().parse(envelope.param(), message_of(document));
    }
};

#ifdef NETPUBLIC_HAVE_PUGIXML
class ParseInPlace : public FromText {
public:
    using FromText::FromText;

protected:
    void once(std::string &text, Envelope &) override
    {
        pugi::xml_document document;
        document.load_buffer_inplace(text.data(), length());
    }
};
#endif

// A payload that holds what the sample says, and its reply.
class Replied : public Work {
public:
    explicit Replied(const Sample &sample) : Work(32), sample_(sample), envelope_(sample)
    {
        std::string text = sample.text;
        const auto length = static_cast<unsigned int>(text.size());
        require(net_text_x2s(sample.parse, envelope_.param(), text.data(), length) == 0, "refused", sample.name);
        complete(sample, envelope_.param());
        TiXmlElement parent("body");
        require(sample.write(envelope_.param(), &parent) == 0, "not written", sample.name);
        const std::string reply = print(*parent.FirstChild());
        reply_.resize(reply.size());
        const auto size = static_cast<unsigned int>(reply.size()) + 1;
        require(net_text_s2x(sample.write, envelope_.param(), reply_.data(), size) == static_cast<int>(reply.size()) &&
                    reply_ == reply,
                "another reply", sample.name);
    }
    void run() override
    {
        for (unsigned i = 0; i < calls(); ++i)
            once();
    }

protected:
    virtual void once() = 0;
    const Sample &sample_;
    Envelope envelope_;
    std::string reply_;
};

class WriteText : public Replied {
public:
    using Replied::Replied;

protected:
    void once() override
    {
        net_text_s2x(sample_.write, envelope_.param(), reply_.data(), static_cast<unsigned int>(reply_.size()) + 1);
    }
};

// Written into a tree, printed without blanks, and the tree released.
class WriteTree : public Replied {
public:
    using Replied::Replied;

protected:
    void once() override
    {
        TiXmlElement parent("body");
        sample_.write(envelope_.param(), &parent);
        TiXmlPrinter printer;
        printer.SetStreamPrinting();
        parent.FirstChild()->Accept(&printer);
    }
};

// A text that wants to cost more than its length, read as a motion message that it says nothing to.
class ReadHostile : public Work {
public:
    explicit ReadHostile(const std::string &inside)
        : Work(1), sample_{"", "hostile", nets_param_md_init, 0, net_md_x2s, nullptr, "<MD>" + inside + "</MD>", ""},
          envelope_(sample_)
    {
        prepare();
        require(read() == 0, "refused", "hostile");
    }
    void prepare() override
    {
        text_ = sample_.text;
    }
    void run() override
    {
        read();
    }

private:
    int read()
    {
        return net_text_x2s(sample_.parse, envelope_.param(), text_.data(), static_cast<unsigned int>(text_.size()));
    }

    Sample sample_;
    Envelope envelope_;
    std::string text_;
};

std::string repeated(std::size_t count, const std::string &text)
{
    std::string all;
    while (count-- > 0)
        all += text;
    return all;
}

void add_hostile(Entries &entries)
{
    constexpr std::size_t levels = 1000000, elements = 100000, attributed = 10000, entities = 200000;
    std::string attributes;
    for (int i = 0; i < 64; ++i)
        attributes += " a" + std::to_string(i) + "=\"\"";
    const std::pair<const char *, std::string> texts[] = {
        {"levels", repeated(levels, "<a>") + repeated(levels, "</a>")},
        {"empty_elements", repeated(elements, "<a/>")},
        {"attributes", repeated(attributed, "<a" + attributes + "/>")},
        {"entities", "<a>" + repeated(entities, "&amp;") + "</a>"},
    };
    for (const auto &[what, text] : texts)
        entries.push_back({std::string("text_hostile/") + what + "/" + std::to_string(text.size()),
                           [inside = text] { return std::make_unique<ReadHostile>(inside); }});
}

template <class Made> void add(Entries &entries, const char *what, const Sample &sample)
{
    entries.push_back({std::string(what) + sample.name, [&sample] { return std::make_unique<Made>(sample); }});
}

} // namespace

void add_text(Entries &entries)
{
    for (const Sample &sample : samples()) {
        add<ReadText>(entries, "text_read/", sample);
        add<ScanText>(entries, "text_scan/", sample);
        add<ReadTree>(entries, "tree_read/", sample);
#ifdef NETPUBLIC_HAVE_PUGIXML
        add<ParseInPlace>(entries, "pugixml_inplace/", sample);
#endif
        if (sample.write != nullptr) {
            add<WriteText>(entries, "text_write/", sample);
            add<WriteTree>(entries, "tree_write/", sample);
        }
    }
    add_hostile(entries);
}

} // namespace bench
