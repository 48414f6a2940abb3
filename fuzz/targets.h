// The fuzz targets. Each is a function over an input's bytes, which checks all that the input says and
// needs no fuzzer: tests replay inputs through the same functions.
#ifndef NETPUBLIC_FUZZ_TARGETS_H
#define NETPUBLIC_FUZZ_TARGETS_H

#include "engine/registry.h"

#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <vector>

class TiXmlElement;

namespace fuzz {

using Run = void (*)(const std::uint8_t *data, std::size_t size);
// Takes the seeds of a target: a name for the file, and the bytes.
using Sink = std::function<void(const std::string &name, const std::string &input)>;

// What an input holds behind the head that names its message.
enum class Body {
    none, // not of that form
    text, // an XML text
    tree, // the code of tree_code.h
};

struct Target {
    const char *name;
    Run run;
    void (*seeds)(const Sink &sink);
    Body body;
    std::size_t longest; // of the inputs
};
const std::vector<Target> &targets();
const Target *find_target(const std::string &name);

// An input with one thing changed that the tables know of: a key, a word, a number at its limit, a
// child more or less. `seed` says which. Empty when the input is of no such form.
std::string mutated(const Target &target, const std::uint8_t *data, std::size_t size, std::size_t most, unsigned seed);
// Reads the examples, so that the mutations know the children of elements that no table describes.
void learn_examples();

void run_parse(const std::uint8_t *data, std::size_t size);
void run_write(const std::uint8_t *data, std::size_t size);
void run_tree(const std::uint8_t *data, std::size_t size);
void run_payload(const std::uint8_t *data, std::size_t size);
void run_route(const std::uint8_t *data, std::size_t size);
void run_header(const std::uint8_t *data, std::size_t size);
void run_scan(const std::uint8_t *data, std::size_t size);
void run_filter(const std::uint8_t *data, std::size_t size);
void run_base64(const std::uint8_t *data, std::size_t size);
void run_grid(const std::uint8_t *data, std::size_t size);
void run_words(const std::uint8_t *data, std::size_t size);
void run_lists(const std::uint8_t *data, std::size_t size);
void run_schedule(const std::uint8_t *data, std::size_t size);
void run_init(const std::uint8_t *data, std::size_t size);

void message_seeds(const Sink &sink, Body body);
void route_seeds(const Sink &sink);
void header_seeds(const Sink &sink);
void scan_seeds(const Sink &sink);
void filter_seeds(const Sink &sink);
void schedule_seeds(const Sink &sink);
void base64_seeds(const Sink &sink);
void list_seeds(const Sink &sink);
void word_seeds(const Sink &sink);

} // namespace fuzz

#endif
