#include "reading/session.h"

#include "model/failure.h"
#include "reading/capture.h"
#include "reading/routes.h"
#include "reading/secrets.h"

#include "toolkit/extension.h"

#include <net_host_standin.h>
#include <net_public.h>

#include <cstring>
#include <utility>

namespace netparam {
namespace {

constexpr unsigned int own_module = 0x400, wifi_module = 0x1000;
constexpr unsigned int errors = 0x1, traces = 0x4 | 0x8;

} // namespace

void Options::settle() const
{
    if (file == "-" && extension == "-")
        throw Failure(exit_usage, "only one of FILE and --ext can be standard input");
    device.play();
}

Session::Session(const Entry &entry, const Options &options, const std::string &file) : entry_(entry), options_(options)
{
    modulemask = own_module | (options.traces ? wifi_module : 0);
    loglevel = errors | (options.traces ? traces : 0);
    if (!options.extension.empty())
        extension_document_.emplace(options.extension);
    if (file.empty())
        return;
    body_document_.emplace(file);
    body_document_->choose(entry.element());
}

Session::~Session()
{
    if (param_.data != nullptr)
        net_free(&param_.data);
}

void Session::take_body(const Document &document)
{
    body_document_.emplace(document.name(), document.text(), document.first_line());
    body_document_->choose(entry_.element());
}

bool Session::read_extension()
{
    if (!extension_document_)
        return true;
    std::string text = extension_document_->text();
    const int result = logged(log_, [&] { return net_exten_x2s(text.data(), &extension_); });
    // The library reads the text; the trace wants the elements.
    net_ext_t again = {};
    std::string lines;
    trace_ = std::make_unique<Trace>(options_.show_secrets);
    logged(lines, [&] { return netpublic::read_extension(extension_document_->tree().RootElement(), &again); });
    trace_->stop();
    return result == 0;
}

void Session::prepare()
{
    if (entry_.initialiser != nullptr) {
        if (logged(log_, [&] { return entry_.initialiser->function(&param_, &extension_); }) != 0)
            throw Failure(exit_fault, std::string(entry_.initialiser->name) + "() failed\n" + log());
        allocated_ = param_.data != nullptr ? net_host_memory().last_size : 0;
        record_size_ = param_.dataSize;
    }
    if (param_.data != nullptr)
        return;
    // The host's own preparations.
    const netpublic::Table *table = entry_.table();
    const unsigned int size = entry_.message->size > 0 ? entry_.message->size
                              : table != nullptr       ? table->record_size
                                                       : 0;
    if (size == 0)
        return;
    param_.inited = 1;
    param_.dataSize = size;
    param_.data = net_malloc(size);
    if (param_.data == nullptr)
        throw Failure(exit_fault, "no memory for the payload");
    std::memset(param_.data, 0, size);
    allocated_ = record_size_ = size;
}

bool Session::parse()
{
    const TiXmlElement &body = body_document_->body();
    ByText by_text(entry_, param_, allocated_);
    const bool accepted = parse(body);
    by_text.compare_reading(*body_document_, accepted, param_);
    if (!entry_.bears_element(body))
        trace_->add({Note::Kind::element, spot_of(body), path_of(body), wrong_element(entry_), entry_.element()});
    for (const TiXmlElement *other : body_document_->beside())
        trace_->add({Note::Kind::unread, spot_of(*other), path_of(*other),
                     "stands beside " + printable(body.ValueStr()) + " and is not read"});
    return accepted;
}

bool Session::parse(const TiXmlElement &body)
{
    trace_ = std::make_unique<Trace>(options_.show_secrets);
    auto *node = const_cast<TiXmlElement *>(&body); // parsers only read it
    const int result = logged(log_, [&] { return entry_.message->parse(&param_, node); });
    trace_->stop();
    return result == 0;
}

std::string wrong_element(const Entry &entry)
{
    return "is the root, " + entry.name() + "'s is " + entry.element();
}

const Document *Session::read(bool &accepted)
{
    accepted = read_extension();
    if (!accepted)
        return extension_document();
    prepare();
    accepted = parse();
    return body_document();
}

bool Session::write()
{
    stops_.clear();
    reply_.Clear();
    const auto stop = [](void *self, netpublic::Event event, const netpublic::Table &table, const netpublic::Row *row,
                         void *record, netpublic::Node /*element*/) {
        if (event == netpublic::Event::unwritten)
            static_cast<Session *>(self)->stops_.push_back({&table, row, record});
    };
    const netpublic::Watch watch = {this, stop};
    netpublic::watch = &watch;
    const bool written = logged(log_, [&] { return entry_.message->write(&param_, &reply_); }) == 0;
    netpublic::watch = nullptr;
    compare_writing(entry_, param_, written, reply());
    return written;
}

std::string Session::body_text() const
{
    const unsigned int kept = std::exchange(loglevel, 0);
    net_param_t param = param_;
    TiXmlElement parent("reply");
    const bool written = entry_.message->write(&param, &parent) == 0;
    loglevel = kept;
    return written && parent.FirstChildElement() != nullptr ? printed(*parent.FirstChildElement()) : "";
}

std::size_t Session::records() const
{
    return record_size_ > 0 ? allocated_ / record_size_ : 0;
}

std::string Session::log() const
{
    if (options_.show_secrets)
        return log_;
    std::string text = log_;
    for (const auto *document : {&extension_document_, &body_document_})
        if (*document)
            text = without(text, secrets_in((*document)->tree()));
    return text;
}

} // namespace netparam
