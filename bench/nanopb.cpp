// nanopb decodes and encodes the records of some examples, each element a field. The descriptions and the
// encoded records are made from the examples when this is built (nanopb.py).
#include "samples.h"
#include "work.h"

#ifdef NETPUBLIC_HAVE_NANOPB
#include <records.pb.h>

#include <pb_decode.h>
#include <pb_encode.h>

#include <cstring>
#include <fstream>
#include <iterator>
#endif

namespace bench {

#ifdef NETPUBLIC_HAVE_NANOPB
namespace {

constexpr unsigned calls = 8;

std::string encoded_record(const char *name)
{
    std::ifstream file(std::string(NETPUBLIC_RECORDS_DIR "/") + name + ".pb", std::ios::binary);
    require(file.good(), "no record", name);
    return std::string(std::istreambuf_iterator<char>(file), {});
}

template <class Record> class Exchange {
public:
    Exchange(const char *name, const pb_msgdesc_t *fields) : fields_(fields), encoded_(encoded_record(name))
    {
        // Decoding and encoding again gives the same bytes.
        decode();
        std::string again = encoded_;
        std::memset(&again[0], 0, again.size());
        again.swap(encoded_);
        encode();
        require(again == encoded_, "nanopb encodes another record", name);
    }
    void decode()
    {
        pb_istream_t stream = pb_istream_from_buffer(bytes(), encoded_.size());
        require(pb_decode(&stream, fields_, &record_), "not decoded", "nanopb");
    }
    void encode()
    {
        pb_ostream_t stream = pb_ostream_from_buffer(bytes(), encoded_.size());
        require(pb_encode(&stream, fields_, &record_), "not encoded", "nanopb");
    }

private:
    pb_byte_t *bytes()
    {
        return reinterpret_cast<pb_byte_t *>(&encoded_[0]);
    }

    const pb_msgdesc_t *fields_;
    std::string encoded_;
    Record record_{};
};

template <class Record> void add(Entries &entries, const char *name, const pb_msgdesc_t *fields)
{
    const auto make = [=] { return std::make_shared<Exchange<Record>>(name, fields); };
    entries.push_back({std::string("nanopb_decode/") + name, [=] {
                           const auto exchange = make();
                           return std::make_unique<Plain>(calls, [=] { exchange->decode(); });
                       }});
    entries.push_back({std::string("nanopb_encode/") + name, [=] {
                           const auto exchange = make();
                           return std::make_unique<Plain>(calls, [=] { exchange->encode(); });
                       }});
}

} // namespace

void add_nanopb(Entries &entries)
{
#define RECORD(name) add<name>(entries, #name, name##_fields);
#include <records.inc>
#undef RECORD
}
#else
void add_nanopb(Entries &) {}
#endif

} // namespace bench
