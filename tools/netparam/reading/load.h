// A payload from JSON, by the rows of its table: the way back from dump.h, with the same names.
#ifndef NETPARAM_LOAD_H
#define NETPARAM_LOAD_H

#include "engine/table.h"
#include "model/json.h"

#include <stdexcept>
#include <string>

namespace netparam {

// A value that its member cannot take.
struct Misfit : std::runtime_error {
    std::string path;     // "sensitivityInfoList[1]/startHour"; empty for the payload itself
    std::string read;     // fit for the terminal
    std::string accepted; // what would be right

    Misfit(std::string at, std::string what_stands, const std::string &reason, std::string right)
        : std::runtime_error(reason), path(std::move(at)), read(std::move(what_stands)), accepted(std::move(right))
    {
    }
};

// The code of an alarm type as alarm_types_of() spells it. False without one.
bool alarm_type_code(const std::string &word, int &code);

// Members that the object does not name keep what they hold; an array replaces its member as a whole.
// Any number that fits the C type is taken: the message's writer decides about it. Throws a Misfit.
void load_record(const netpublic::Table &table, void *record, const Json &object, const std::string &path = "");

} // namespace netparam

#endif
