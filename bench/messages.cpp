// Parsers and writers of messages against the XML library's own part of the work.
#include "samples.h"
#include "work.h"

#include <tinyxml.h>

namespace bench {
namespace {

std::size_t count_nodes(const TiXmlNode &node)
{
    std::size_t count = 1;
    for (const TiXmlNode *child = node.FirstChild(); child != nullptr; child = child->NextSibling())
        count += count_nodes(*child);
    return count;
}

std::string print(const TiXmlNode &node)
{
    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    node.Accept(&printer);
    return printer.Str();
}

// So many calls that a clock does not matter and that the trees stay in the cache.
unsigned calls_for(std::size_t nodes)
{
    constexpr std::size_t wanted = 512;
    return static_cast<unsigned>(nodes < wanted ? wanted / nodes : 1);
}

class Tree {
public:
    explicit Tree(const Sample &sample)
    {
        document_.Parse(padded(sample.text).c_str());
        require(!document_.Error(), "not well formed", sample.name);
        nodes_ = count_nodes(document_);
    }
    TiXmlElement *message()
    {
        return message_of(document_);
    }
    std::size_t nodes() const
    {
        return nodes_;
    }

private:
    TiXmlDocument document_;
    std::size_t nodes_;
};

// The XML library parses the text. Releasing the tree is not counted.
class ParseText : public Work {
public:
    explicit ParseText(const Sample &sample)
        : Work(calls_for(Tree(sample).nodes())), text_(padded(sample.text)), documents_(calls())
    {
    }
    void run() override
    {
        for (TiXmlDocument &document : documents_)
            document.Parse(text_.c_str());
    }
    void clean() override
    {
        for (TiXmlDocument &document : documents_)
            document.Clear();
    }

private:
    std::string text_;
    std::vector<TiXmlDocument> documents_;
};

// The message's parser reads the tree into fresh payloads, whose preparation is not counted.
class Read : public Work {
public:
    explicit Read(const Sample &sample) : Read(sample, std::make_shared<Tree>(sample)) {}
    void prepare() override
    {
        for (const auto &envelope : envelopes_)
            envelope->restore();
    }
    void run() override
    {
        for (const auto &envelope : envelopes_)
            parse_(envelope->param(), tree_->message());
    }

private:
    // Payloads that do not push each other out of the cache.
    static unsigned calls_for_payloads(std::size_t nodes, std::size_t bytes)
    {
        constexpr std::size_t wanted = 64 * 1024;
        const std::size_t calls = calls_for(nodes);
        return static_cast<unsigned>(calls * bytes < wanted ? calls : (wanted + bytes - 1) / bytes);
    }
    Read(const Sample &sample, const std::shared_ptr<Tree> &tree)
        : Work(calls_for_payloads(tree->nodes(), Envelope(sample).bytes())), tree_(tree), parse_(sample.parse)
    {
        for (unsigned i = 0; i < calls(); ++i) {
            envelopes_.push_back(std::make_unique<Envelope>(sample));
            require(parse_(envelopes_.back()->param(), tree_->message()) == 0, "refused", sample.name);
        }
    }

    std::shared_ptr<Tree> tree_;
    Parse parse_;
    std::vector<std::unique_ptr<Envelope>> envelopes_;
};

// An envelope that holds what the sample says, and what its writer makes of it.
class Written {
public:
    explicit Written(const Sample &sample) : write(sample.write), envelope(sample)
    {
        Tree tree(sample);
        require(sample.parse(envelope.param(), tree.message()) == 0, "refused", sample.name);
        complete(sample, envelope.param());
        require(write(envelope.param(), &parent) == 0, "not written", sample.name);
        require(parent.FirstChild() != nullptr, "nothing written", sample.name);
    }
    // Whether a tree is the written one.
    bool equals(const TiXmlElement &other) const
    {
        return print(other) == print(parent);
    }
    unsigned calls() const
    {
        return calls_for(count_nodes(parent));
    }

    Write write;
    Envelope envelope;
    TiXmlElement parent{"body"};
};

// Trees are built into one parent each; releasing them is not counted.
class Build : public Work {
public:
    explicit Build(const std::shared_ptr<Written> &written) : Work(written->calls()), written_(written)
    {
        for (unsigned i = 0; i < calls(); ++i)
            parents_.push_back(std::make_unique<TiXmlElement>("body"));
    }
    void run() override
    {
        for (const auto &parent : parents_)
            build(parent.get());
    }
    void clean() override
    {
        for (const auto &parent : parents_)
            parent->Clear();
    }

protected:
    virtual void build(TiXmlElement *parent) = 0;
    Written &written()
    {
        return *written_;
    }
    // To be called by the constructors of what builds.
    void check(const char *name)
    {
        run();
        for (const auto &parent : parents_)
            require(written_->equals(*parent), "a different tree", name);
        clean();
    }

private:
    std::shared_ptr<Written> written_;
    std::vector<std::unique_ptr<TiXmlElement>> parents_;
};

class WriteMessage : public Build {
public:
    explicit WriteMessage(const Sample &sample) : Build(std::make_shared<Written>(sample))
    {
        check(sample.name);
    }

private:
    void build(TiXmlElement *parent) override
    {
        written().write(written().envelope.param(), parent);
    }
};

// A tree as a list of what it is built of, so that building it again costs nothing but the XML library's
// part: all names and texts, digits and base64 included, lie ready as C strings.
class Plan {
public:
    enum class Step { open, attribute, text, close };
    struct Item {
        Step step;
        std::string name, value;
    };

    explicit Plan(const TiXmlNode &parent)
    {
        for (const TiXmlNode *child = parent.FirstChild(); child != nullptr; child = child->NextSibling())
            add(*child);
        items_.push_back({Step::close, "", ""});
    }
    const Item *begin() const
    {
        return items_.data();
    }

private:
    void add(const TiXmlNode &node)
    {
        const TiXmlElement *element = node.ToElement();
        if (element == nullptr) {
            items_.push_back({Step::text, node.ValueStr(), ""});
            return;
        }
        items_.push_back({Step::open, node.ValueStr(), ""});
        for (const auto *attribute = element->FirstAttribute(); attribute != nullptr; attribute = attribute->Next())
            items_.push_back({Step::attribute, attribute->Name(), attribute->Value()});
        for (const TiXmlNode *child = node.FirstChild(); child != nullptr; child = child->NextSibling())
            add(*child);
        items_.push_back({Step::close, "", ""});
    }

    std::vector<Item> items_;
};

// The bare cost of a tree: each node is made on the heap and linked.
const Plan::Item *link_items(TiXmlElement *parent, const Plan::Item *item)
{
    for (; item->step != Plan::Step::close; ++item) {
        if (item->step == Plan::Step::attribute) {
            parent->SetAttribute(item->name.c_str(), item->value.c_str());
        } else if (item->step == Plan::Step::text) {
            parent->LinkEndChild(new TiXmlText(item->name.c_str()));
        } else {
            auto *element = new TiXmlElement(item->name.c_str());
            parent->LinkEndChild(element);
            item = link_items(element, item + 1);
        }
    }
    return item;
}

// Level by level: each level's element is a local one, filled and then copied into its parent.
const Plan::Item *copy_items(TiXmlElement *parent, const Plan::Item *item)
{
    for (; item->step != Plan::Step::close; ++item) {
        if (item->step == Plan::Step::attribute) {
            parent->SetAttribute(item->name.c_str(), item->value.c_str());
        } else if (item->step == Plan::Step::text) {
            parent->InsertEndChild(TiXmlText(item->name.c_str()));
        } else {
            TiXmlElement element(item->name.c_str());
            item = copy_items(&element, item + 1);
            parent->InsertEndChild(element);
        }
    }
    return item;
}

using BuildItems = const Plan::Item *(*)(TiXmlElement *, const Plan::Item *);

class BuildPlan : public Build {
public:
    BuildPlan(const Sample &sample, BuildItems build_items)
        : BuildPlan(sample, build_items, std::make_shared<Written>(sample))
    {
    }

private:
    BuildPlan(const Sample &sample, BuildItems build_items, const std::shared_ptr<Written> &written)
        : Build(written), plan_(written->parent), build_items_(build_items)
    {
        check(sample.name);
    }
    void build(TiXmlElement *parent) override
    {
        build_items_(parent, plan_.begin());
    }

    Plan plan_;
    BuildItems build_items_;
};

} // namespace

void add_messages(Entries &entries)
{
    for (const Sample &sample : samples()) {
        const std::string name = sample.name;
        entries.push_back({"tinyxml/" + name, [&] { return std::make_unique<ParseText>(sample); }});
        entries.push_back({"x2s/" + name, [&] { return std::make_unique<Read>(sample); }});
        if (sample.write == nullptr)
            continue;
        entries.push_back({"s2x/" + name, [&] { return std::make_unique<WriteMessage>(sample); }});
        entries.push_back({"link/" + name, [&] { return std::make_unique<BuildPlan>(sample, link_items); }});
        entries.push_back({"copy/" + name, [&] { return std::make_unique<BuildPlan>(sample, copy_items); }});
    }
}

} // namespace bench
