#include "reading/load.h"

#include "drawing/draw.h"
#include "model/accept.h"
#include "model/nearest.h"
#include "model/rows.h"
#include "model/text.h"
#include "reading/secrets.h"
#include "reading/shapes.h"

#include "values/tables.h"

#include <net_types.h>
#include <net_xml_public.h>

#include <cmath>
#include <cstdlib>
#include <functional>
#include <limits>

namespace netparam {
namespace {

using netpublic::Detail;
using netpublic::Kind;
using netpublic::Row;
using netpublic::Shape;
using netpublic::Table;
using netpublic::WordTable;
using Target = RecordView<char>;

std::string shown(const Json &value)
{
    constexpr std::size_t longest = 80;
    if (value.is_string())
        return in_quotes(value.get_ref<const std::string &>(), longest);
    if (value.is_structured())
        return (value.is_array() ? "an array of " : "an object of ") + std::to_string(value.size());
    return printable(value.dump());
}

[[noreturn]] void refuse(const std::string &path, const Json &value, const std::string &reason,
                         const std::string &accepted)
{
    throw Misfit(path, shown(value), reason, accepted);
}

std::string item_path(const std::string &list, std::size_t index)
{
    return list + "[" + std::to_string(index) + "]";
}

const Json &array_of(const Json &value, const std::string &path, std::size_t most, const std::string &items)
{
    const std::string accepted = "an array of at most " + std::to_string(most) + " " + items;
    if (!value.is_array())
        refuse(path, value, "this is no array", accepted);
    if (value.size() > most)
        refuse(path, value, "the array is too long", accepted);
    return value;
}

// The texts of JSON may hold what a member cannot.
const std::string &text_of(const Json &value, const std::string &path, const std::string &accepted)
{
    if (!value.is_string())
        refuse(path, value, "this is no text", accepted);
    const auto &text = value.get_ref<const std::string &>();
    if (text.find('\0') != std::string::npos)
        refuse(path, value, "a zero byte in the text", accepted);
    return text;
}

template <class Type> Type number_of(const Json &value, const std::string &path)
{
    using Limits = std::numeric_limits<Type>;
    const std::string accepted =
        "a whole number from " + std::to_string(Limits::min()) + " to " + std::to_string(Limits::max());
    if (!value.is_number_integer())
        refuse(path, value, "this is no whole number", accepted);
    const bool negative = !value.is_number_unsigned() && value.get<std::int64_t>() < 0;
    const bool fits = negative ? std::is_signed_v<Type> && value.get<std::int64_t>() >= std::int64_t{Limits::min()}
                               : value.get<std::uint64_t>() <= static_cast<std::uint64_t>(Limits::max());
    if (!fits)
        refuse(path, value, "the number does not fit the member", accepted);
    return value.get<Type>();
}

float real_of(const Json &value, const std::string &path)
{
    const char *accepted = "a number that fits a float, or \"nan\", \"inf\", \"-inf\"";
    if (value == "nan" || value == "-nan" || value == "inf" || value == "-inf")
        return std::strtof(value.get_ref<const std::string &>().c_str(), nullptr);
    if (!value.is_number())
        refuse(path, value, "this is no number", accepted);
    const auto number = value.get<double>();
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max()))
        refuse(path, value, "the number does not fit the member", accepted);
    return static_cast<float>(number);
}

[[noreturn]] void refuse_word(const std::string &path, const Json &value, const std::string &word,
                              const std::vector<std::string> &words, const std::string &more)
{
    refuse(path, value, no_such_word(word, words), more + joined(words, ", "));
}

template <class Type> Type word_of(const WordTable &words, const Json &value, const std::string &path)
{
    if (value.is_number())
        return number_of<Type>(value, path);
    const std::string accepted = "one of these words, or a number: ";
    const std::string &text = text_of(value, path, accepted + joined(all_words(words), ", "));
    int code;
    if (!code_of(words, text, code))
        refuse_word(path, value, text, all_words(words), accepted);
    return static_cast<Type>(code);
}

// "rec,ftp" and ["rec", "ftp"] are the same.
std::vector<std::string> parts_of(const Json &value, const std::string &path, const std::string &accepted)
{
    std::vector<std::string> parts;
    if (value.is_array()) {
        for (std::size_t i = 0; i < value.size(); ++i)
            parts.push_back(text_of(value[i], item_path(path, i), accepted));
        return parts;
    }
    const std::string &text = text_of(value, path, accepted);
    for (const std::string &part : split(text, ','))
        parts.push_back(trimmed(part));
    if (parts.size() == 1 && parts[0].empty())
        parts.clear();
    return parts;
}

std::uint32_t mask_of(const WordTable &words, const Json &value, const std::string &path)
{
    const std::string accepted = "any of these words, or a number: none, ";
    if (value.is_number())
        return number_of<std::uint32_t>(value, path);
    std::uint32_t mask = 0;
    for (const std::string &word : parts_of(value, path, accepted + joined(all_words(words), ", "))) {
        int code = 0;
        if (!code_of(words, word, code) && lower(word) != "none")
            refuse_word(path, value, word, all_words(words), accepted);
        mask |= static_cast<std::uint32_t>(code);
    }
    return mask;
}

time_section_t set_of(const Json &value, const std::string &path)
{
    const std::string accepted = "any of these words, the smart detections also with _0 to _2: none, ";
    time_section_t set = {};
    for (const std::string &word : parts_of(value, path, accepted + joined(all_words(netpublic::alarm_types), ", "))) {
        int code;
        if (lower(word) == "none")
            continue;
        if (!alarm_type_code(word, code))
            refuse_word(path, value, word, all_words(netpublic::alarm_types), accepted);
        alarm_in_add_event(&set, code);
    }
    return set;
}

void load_text(char *at, std::size_t size, std::size_t longest, const Json &value, const std::string &path)
{
    const std::string accepted = "a text of at most " + std::to_string(longest) + " bytes";
    const std::string &text = text_of(value, path, accepted);
    if (text.size() > longest)
        refuse(path, value, "the text is too long: " + std::to_string(text.size()) + " bytes", accepted);
    std::memset(at, 0, size);
    std::memcpy(at, text.data(), text.size());
}

// Rows of cells, as texts of 0 and 1 or as arrays of numbers.
void load_cells(const Json &value, const std::string &path, int columns, int rows, bool is_text,
                const std::function<void(int column, int row, const Json &cell, const std::string &path)> &set)
{
    const std::string line = "a text of " + std::to_string(columns) + " characters 0 and 1" +
                             (is_text ? "" : ", or an array of as many numbers");
    const std::string accepted = "an array of " + std::to_string(rows) + " rows, each " + line;
    if (!value.is_array() || value.size() != static_cast<std::size_t>(rows))
        refuse(path, value, value.is_array() ? "the number of rows is wrong" : "this is no array", accepted);
    for (std::size_t row = 0; row < value.size(); ++row) {
        const Json &cells = value[row];
        const std::string at = item_path(path, row);
        if (!cells.is_string() && (is_text || !cells.is_array()))
            refuse(at, cells, "this is no row of cells", line);
        const auto *text = cells.get_ptr<const std::string *>();
        const std::size_t width = text != nullptr ? text->size() : cells.size();
        if (width != static_cast<std::size_t>(columns))
            refuse(at, cells, "the row has " + std::to_string(width) + " cells", line);
        for (std::size_t column = 0; column < width; ++column) {
            if (text != nullptr && (*text)[column] != '0' && (*text)[column] != '1')
                refuse(at, cells, "cell " + std::to_string(column + 1) + " is neither 0 nor 1", line);
            set(static_cast<int>(column), static_cast<int>(row),
                text != nullptr ? Json((*text)[column] - '0') : cells[column], item_path(at, column));
        }
    }
}

void load_points(net_smart_ai_points_t &points, const Json &value, const std::string &path)
{
    const std::size_t most = std::size(points.points);
    array_of(value, path, most, "points [x, y]");
    points = {};
    points.pointNum = static_cast<int>(value.size());
    for (std::size_t i = 0; i < value.size(); ++i) {
        const std::string at = item_path(path, i);
        if (!value[i].is_array() || value[i].size() != 2)
            refuse(at, value[i], "this is no point", "[x, y]");
        points.points[i] = {real_of(value[i][0], item_path(at, 0)), real_of(value[i][1], item_path(at, 1))};
    }
}

void load_sets(char *at, const Json &value, const std::string &path)
{
    for (std::size_t day = 0; day < week_days; ++day) {
        const std::string accepted = "an array of 7 days, each an array of 24 sets of alarm types";
        if (!value.is_array() || value.size() != week_days)
            refuse(path, value, "this is no week", accepted);
        if (!value[day].is_array() || value[day].size() != day_hours)
            refuse(item_path(path, day), value[day], "this is no day", accepted);
        for (std::size_t hour = 0; hour < day_hours; ++hour)
            store(at + (day * day_hours + hour) * sizeof(time_section_t),
                  set_of(value[day][hour], item_path(item_path(path, day), hour)));
    }
}

void load_schedule(net_schedule_t &schedule, const Json &value, const std::string &path)
{
    const char *accepted = "an object with \"types\" and \"section\"";
    if (!value.is_object())
        refuse(path, value, "this is no object", accepted);
    for (const auto &[name, member] : value.items())
        if (name == "types")
            schedule.types = set_of(member, path + "/" + name);
        else if (name == "section")
            load_sets(reinterpret_cast<char *>(schedule.section), member, path + "/" + name);
        else
            refuse(path + "/" + name, member, "there is no such member", accepted);
}

// A record whose members nobody names.
void load_unnamed(char *at, std::size_t size, const Json &value, const std::string &path)
{
    const std::size_t words = size / sizeof(std::int32_t);
    array_of(value, path, words, "numbers");
    for (std::size_t i = 0; i < words; ++i)
        store(at + i * sizeof(std::int32_t),
              i < value.size() ? number_of<std::int32_t>(value[i], item_path(path, i)) : 0);
}

void load_scalar(char *at, const Detail &detail, const Json &value, const std::string &path)
{
    switch (detail.shape) {
    case Shape::i32:
        return store(at, number_of<std::int32_t>(value, path));
    case Shape::u32:
        return store(at, number_of<std::uint32_t>(value, path));
    case Shape::i64:
        return store(at, number_of<std::int64_t>(value, path));
    case Shape::u64:
        return store(at, number_of<std::uint64_t>(value, path));
    case Shape::f32:
        return store(at, real_of(value, path));
    case Shape::u8:
        return store(at, number_of<std::uint8_t>(value, path));
    case Shape::counted: {
        net_counted_text_t text = {};
        if (!value.is_null()) { // which is one that was never set
            load_text(text.text, sizeof text.text, sizeof text.text - 1, value, path);
            text.length = static_cast<int>(std::strlen(text.text));
            text.capacity = static_cast<int>(sizeof text.text);
        }
        return store(at, text);
    }
    case Shape::section:
        return store(at, set_of(value, path));
    case Shape::points: {
        auto points = load<net_smart_ai_points_t>(at);
        load_points(points, value, path);
        return store(at, points);
    }
    case Shape::schedule: {
        auto schedule = load<net_schedule_t>(at);
        load_schedule(schedule, value, path);
        return store(at, schedule);
    }
    case Shape::record:
        return load_unnamed(at, detail.element_size, value, path);
    case Shape::characters:
    case Shape::hours:
    case Shape::none:
        break;
    }
}

void load_rows(const Target &view, const Json &object, const std::string &path);

// One member, from its JSON value.
class MemberLoader {
public:
    MemberLoader(const Target &view, unsigned index, const Json &object, const Json &value, const std::string &path)
        : view_(view), table_(view.table), index_(index), row_(table_.row(index)), detail_(table_.detail(index)),
          at_(view.member(row_)), object_(object), value_(value), path_(path)
    {
    }

    void load()
    {
        switch (form_of(table_, index_)) {
        case Form::word:
            return load_word(at_, value_, path_);
        case Form::words:
        case Form::month:
            return each(detail_.element_size, "words", &MemberLoader::load_word);
        case Form::mask:
            return load_mask(at_, value_, path_);
        case Form::masks:
            return each(detail_.element_size, "sets", &MemberLoader::load_mask);
        case Form::group:
            return load_inner(at_, value_, path_);
        case Form::list:
            return each(table_.ref(row_.ref).table->record_size, "objects", &MemberLoader::load_inner);
        case Form::record:
            return load_shown(at_, value_, path_);
        case Form::records:
            return each(detail_.element_size, "objects", &MemberLoader::load_shown);
        case Form::text:
            return load_text(at_, capacity_of(table_, index_), longest_text(), value_, path_);
        case Form::texts:
            return load_texts();
        case Form::scalar:
            return load_scalar(at_, detail_, value_, path_);
        case Form::scalars:
        case Form::numbers:
            return each(detail_.element_size, "values", &MemberLoader::load_one);
        case Form::grid:
            return load_grid();
        case Form::week:
            return load_cells(value_, path_, 24, 7, false,
                              [this](int hour, int day, const Json &cell, const std::string &path) {
                                  store(at_ + (day * 24 + hour) * 4, number_of<std::int32_t>(cell, path));
                              });
        case Form::hours:
            return load_hours();
        case Form::sets:
            return load_sets(at_, value_, path_);
        case Form::none:
            break;
        }
    }

private:
    using LoadItem = void (MemberLoader::*)(char *at, const Json &value, const std::string &path);

    // The items of an array. Those behind them become zero, unless a count tells how many there are.
    void each(std::size_t size, const std::string &items, LoadItem load_item)
    {
        const std::size_t capacity = capacity_of(table_, index_);
        array_of(value_, path_, capacity, items);
        const Row *count = count_of(table_, row_);
        if (count != nullptr)
            set_count(view_.member(*count), *count, static_cast<int>(capacity));
        else
            std::memset(at_ + value_.size() * size, 0, (capacity - value_.size()) * size);
        for (std::size_t i = 0; i < value_.size(); ++i)
            (this->*load_item)(at_ + i * size, value_[i], item_path(path_, i));
    }

    // Where the count is a member that the object names, too, both must agree.
    void set_count(char *at, const Row &count, int capacity)
    {
        const int items = static_cast<int>(value_.size());
        for (const auto &[name, value] : object_.items())
            for (unsigned i = 0; i < table_.rows; ++i) {
                const bool is_count = table_.row(i).offset == count.offset && is_shown(table_, i);
                if (!is_count || name != name_of(table_, i))
                    continue;
                if (std::clamp(netparam::load<std::int32_t>(at), 0, capacity) != items)
                    refuse(path_, value_, name + " is " + value.dump() + ", which contradicts the array",
                           "an array of as many items, or no " + name);
                return;
            }
        store(at, items);
    }

    void load_word(char *at, const Json &value, const std::string &path)
    {
        const WordTable &words = *row_words(table_, row_);
        if (detail_.shape == Shape::u8)
            store(at, word_of<std::uint8_t>(words, value, path));
        else
            store(at, word_of<std::int32_t>(words, value, path));
    }

    void load_one(char *at, const Json &value, const std::string &path)
    {
        load_scalar(at, detail_, value, path);
    }

    void load_mask(char *at, const Json &value, const std::string &path)
    {
        store(at, mask_of(*row_words(table_, row_), value, path));
    }

    void load_inner(char *record, const Json &value, const std::string &path)
    {
        const Table &inner = *table_.ref(row_.ref).table;
        load_rows({inner, record, 0, inner.record_size}, value, path);
    }

    void load_shown(char *record, const Json &value, const std::string &path)
    {
        load_rows({*detail_.shown, record, detail_.shown_offset, detail_.element_size}, value, path);
    }

    std::size_t longest_text() const
    {
        if (row_.kind == Kind::text)
            return static_cast<std::size_t>(table_.limit(row_.limits).low);
        // What is never written need not end with a zero.
        return capacity_of(table_, index_) - (is_written() ? 1 : 0);
    }

    bool is_written() const
    {
        for (unsigned i = 0; i < table_.written; ++i)
            if (table_.row(table_.ordered(i)).offset == row_.offset)
                return true;
        return false;
    }

    void load_texts()
    {
        const std::size_t count = detail_.dimensions[0], size = detail_.dimensions[1];
        array_of(value_, path_, count, "texts");
        std::memset(at_, 0, count * size);
        for (std::size_t i = 0; i < value_.size(); ++i)
            load_text(at_ + i * size, size, size - 1, value_[i], item_path(path_, i));
    }

    // In the size that the record tells, or all cells that there is room for.
    void load_grid()
    {
        const GridLayout layout(detail_);
        int columns = size_beside(view_, "width", "columns", layout.columns);
        int rows = size_beside(view_, "height", "rows", layout.rows);
        const bool all = value_.is_array() && value_.size() == static_cast<std::size_t>(layout.rows) &&
                         (value_[0].is_string() ? value_[0].get_ref<const std::string &>().size() : value_[0].size()) ==
                             static_cast<std::size_t>(layout.columns);
        if (all) {
            columns = layout.columns;
            rows = layout.rows;
        }
        std::memset(at_, 0, static_cast<std::size_t>(layout.columns * layout.rows));
        load_cells(value_, path_, columns, rows, false,
                   [&](int column, int row, const Json &cell, const std::string &path) {
                       store(at_ + layout.index(column, row), number_of<std::uint8_t>(cell, path));
                   });
    }

    void load_hours()
    {
        std::memset(at_, 0, 7 * sizeof(std::uint32_t));
        load_cells(value_, path_, 24, 7, true, [this](int hour, int day, const Json &cell, const std::string &) {
            char *bits = at_ + day * 4;
            store(bits, netparam::load<std::uint32_t>(bits) | cell.get<std::uint32_t>() << hour);
        });
    }

    const Target &view_;
    const Table &table_;
    const unsigned index_;
    const Row &row_;
    const Detail &detail_;
    char *const at_;
    const Json &object_, &value_;
    const std::string &path_;
};

// What needs other members to be there already: the size of a grid, the number of items.
bool is_late(const Table &table, unsigned index)
{
    const Form form = form_of(table, index);
    return form == Form::grid || count_of(table, table.row(index)) != nullptr;
}

std::vector<std::string> names_in(const Target &view)
{
    std::vector<std::string> names;
    for (unsigned i = 0; i < view.table.rows; ++i)
        if (view.holds(view.table.row(i)) && is_shown(view.table, i))
            names.push_back(name_of(view.table, i));
    return names;
}

unsigned find_row(const Target &view, const std::string &name)
{
    for (unsigned i = 0; i < view.table.rows; ++i)
        if (view.holds(view.table.row(i)) && is_shown(view.table, i) && name == name_of(view.table, i))
            return i;
    return view.table.rows;
}

void load_rows(const Target &view, const Json &object, const std::string &path)
{
    if (!object.is_object())
        refuse(path, object, "this is no object", "an object with any of: " + joined(names_in(view), ", "));
    for (const bool late : {false, true})
        for (const auto &[name, value] : object.items()) {
            const std::string at = path.empty() ? name : path + "/" + name;
            const unsigned index = find_row(view, name);
            if (index == view.table.rows) {
                refuse(at, value, "there is no such member" + meant(name, names_in(view)),
                       joined(names_in(view), ", "));
            }
            if (value == hidden && is_secret(name))
                refuse(at, value, "the secret itself is not there",
                       "its text, which \"netparam parse --json --show-secrets\" prints");
            if (is_late(view.table, index) == late)
                MemberLoader(view, index, object, value, at).load();
        }
}

} // namespace

// "crossline_2" is rule 2's code of the smart detections; "code 3" is one without a word.
bool alarm_type_code(const std::string &word, int &code)
{
    if (code_of(netpublic::alarm_types, word, code))
        return true;
    for (code = 0; code <= netpublic::alarm_type_last; ++code) {
        time_section_t one = {};
        alarm_in_add_event(&one, code);
        if (lower(alarm_types_of(one)) == lower(word))
            return true;
    }
    return false;
}

void load_record(const Table &table, void *record, const Json &object, const std::string &path)
{
    load_rows({table, static_cast<char *>(record), 0, table.record_size}, object, path);
}

} // namespace netparam
