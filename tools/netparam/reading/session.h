// One exchange with the library, as the host leads it: extension header, initialiser, parser, writer.
#ifndef NETPARAM_SESSION_H
#define NETPARAM_SESSION_H

#include "model/messages.h"
#include "reading/device.h"
#include "reading/document.h"
#include "reading/trace.h"

#include <net_types.h>

#include <memory>
#include <optional>
#include <string>
#include <vector>

namespace netparam {

// Which exchange, with which device.
struct Options {
    Device device;
    std::string message;
    std::string file;            // empty for none
    std::string extension;       // empty for none
    std::string picture;         // the file for the drawings; empty for none
    std::string format = "text"; // of refusals and notes; see annotate.h
    bool json = false;
    bool strict = false; // what is lost is refused
    bool show_secrets = false;
    bool full = false;   // do not shorten long texts
    bool traces = false; // have the library log its traces, too
    Style style;

    // The arguments and options of every verb that plays an exchange; see terminal/options.cpp.
    CLI::App &add_options(CLI::App &verb);
    // --svg, for verbs that call it.
    void add_picture(CLI::App &verb);
    // --format, for verbs that call it.
    void add_format(CLI::App &verb, bool with_json);
    // What the options alone cannot say; then the host answers as the device does. Fails with exit_usage.
    void settle() const;
};

// "is the root, md's is MD"
std::string wrong_element(const Entry &entry);

class Session {
public:
    // `file` holds the body; empty where none is read, or another one is taken.
    Session(const Entry &entry, const Options &options, const std::string &file = "");
    ~Session();
    Session(const Session &) = delete;
    Session &operator=(const Session &) = delete;

    // Another body than the file's.
    void take_body(const Document &document);
    // The extension header of the request, if there is one; false when it is refused.
    bool read_extension();
    // The initialiser, or the host's preparations. A failure is a fault.
    void prepare();
    // The body; false when it is refused. Another one than the file's must outlive the trace.
    bool parse();
    bool parse(const TiXmlElement &body);
    // The extension header, if there is one, the initialiser, and the body. The document that was read last, which is
    // the refused one if `accepted` is false.
    const Document *read(bool &accepted);
    // The reply, under a parent of its own; false when the writer refuses.
    bool write();
    // What was written; null when the writer has nothing to say.
    const TiXmlElement *reply() const
    {
        return reply_.FirstChildElement();
    }

    const Entry &entry() const
    {
        return entry_;
    }
    const net_param_t &envelope() const
    {
        return param_;
    }
    // What the writer makes of the payload as it is now, without a log; empty when it fails.
    std::string body_text() const;
    // Where the latest writing has failed, the innermost place first: nothing where the message's own code refuses.
    struct Stop {
        const netpublic::Table *table;
        const netpublic::Row *row;
        const void *record;
    };
    const std::vector<Stop> &stops() const
    {
        return stops_;
    }
    // How many items the list holds whose number the envelope keeps; for a payload that did not come from a body.
    void set_items(unsigned int count)
    {
        param_.reserved1 = count;
    }
    const net_ext_t &extension() const
    {
        return extension_;
    }
    const Document *extension_document() const
    {
        return extension_document_ ? &*extension_document_ : nullptr;
    }
    const Document *body_document() const
    {
        return body_document_ ? &*body_document_ : nullptr;
    }
    // Of the latest reading.
    const Trace *trace() const
    {
        return trace_.get();
    }
    // How many records were allocated; lists have several.
    std::size_t records() const;
    // Is the payload a list of the records that the table describes?
    bool is_list(const netpublic::Table &table) const
    {
        return records() > 1 && table.record_size == record_size_;
    }
    // The envelope's `dataSize` as it was prepared; some parsers change it.
    std::size_t record_size() const
    {
        return record_size_;
    }
    // Bytes of the payload.
    std::size_t allocated() const
    {
        return allocated_;
    }
    // What the library has logged so far, secrets hidden.
    std::string log() const;

private:
    const Entry &entry_;
    const Options &options_;
    net_param_t param_ = {};
    net_ext_t extension_ = {};
    std::size_t allocated_ = 0, record_size_ = 0;
    std::optional<Document> extension_document_, body_document_;
    std::unique_ptr<Trace> trace_;
    std::vector<Stop> stops_;
    TiXmlElement reply_{"reply"};
    std::string log_;
};

} // namespace netparam

#endif
