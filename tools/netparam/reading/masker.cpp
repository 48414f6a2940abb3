#include "reading/masker.h"

#include "model/text.h"
#include "reading/secrets.h"

#include <algorithm>

namespace netparam {
namespace {

// What is longer counts as a secret's name.
constexpr std::size_t longest_name = 200;

// What a secret's close tag in them does not end.
constexpr std::string_view cdata = "<![CDATA[", comment = "<!--";

bool is_blank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

bool is_break(char c)
{
    return c == '\r' || c == '\n';
}

bool begins_name(char c)
{
    const auto byte = static_cast<unsigned char>(c);
    return (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c == '_' || c == ':' || byte >= 0x80;
}

bool begins_with(std::string_view text, std::string_view start)
{
    return text.substr(0, start.size()) == start;
}

} // namespace

Masker::Masker(const std::vector<std::string> &also, std::size_t longest) : longest_(longest)
{
    for (const std::string &name : also)
        names_.push_back(lower(name));
}

void Masker::feed(std::string_view piece, std::string &out)
{
    for (std::size_t at = 0; at < piece.size();) {
        if (state_ != State::text) {
            step(piece[at++], out);
            continue;
        }
        const std::size_t tag = std::min(piece.find('<', at), piece.size());
        out.append(piece.substr(at, tag - at));
        at = tag;
        if (at < piece.size()) {
            out += piece[at++];
            begin_name(State::name);
        }
    }
}

void Masker::finish(std::string &out)
{
    release(out, false);
}

void Masker::step(char c, std::string &out)
{
    if (state_ == State::secret || state_ == State::section || state_ == State::inner) {
        in_secret(c, out);
        return;
    }
    const bool hidden_value = (state_ == State::quoted || state_ == State::unquoted) && hides_;
    if (c == '<' && !hidden_value) {
        // No tag goes on here: the log was cut, or it was no tag.
        out += c;
        begin_name(State::name);
        return;
    }
    const State before = state_;
    switch (state_) {
    case State::name:
        in_name(c);
        break;
    case State::tag:
        in_tag(c);
        break;
    case State::attribute:
        in_attribute(c);
        break;
    case State::equals:
        in_equals(c);
        break;
    default:
        in_value(c);
    }
    const bool value_goes_on = hides_ && (state_ == State::unquoted || (state_ == State::quoted && before == state_));
    out += value_goes_on && !is_break(c) ? '*' : c;
}

void Masker::begin_name(State state)
{
    state_ = state;
    name_.clear();
    if (state == State::name)
        closing_ = empty_ = hides_ = false;
}

void Masker::add_to_name(char c)
{
    if (name_.size() <= longest_name)
        name_ += c;
}

bool Masker::is_hidden(const std::string &name) const
{
    if (name.empty())
        return false;
    return name.size() > longest_name || may_be_secret(name) ||
           std::find(names_.begin(), names_.end(), lower(name)) != names_.end();
}

void Masker::in_name(char c)
{
    if (name_.empty() && c == '/' && !closing_)
        closing_ = true;
    else if (name_.empty() && !begins_name(c))
        state_ = State::text; // a comment, a declaration, an instruction, or no tag at all
    else if (c != '>' && c != '/' && !is_blank(c))
        add_to_name(c);
    else {
        element_ = name_;
        state_ = State::tag;
        in_tag(c);
    }
}

void Masker::in_tag(char c)
{
    if (c == '>')
        end_tag();
    else if (empty_ = c == '/'; !empty_ && !is_blank(c)) {
        begin_name(State::attribute);
        in_attribute(c);
    }
}

void Masker::in_attribute(char c)
{
    if (c == '>')
        end_tag();
    else if (c == '=' || is_blank(c)) {
        state_ = State::equals;
        quote_ = c == '=' ? '=' : 0;
    } else {
        empty_ = c == '/';
        add_to_name(c);
    }
}

// Behind an attribute's name; `quote_` tells whether the equals sign is there.
void Masker::in_equals(char c)
{
    if (c == '>')
        end_tag();
    else if (c == '=' && quote_ == 0)
        quote_ = '=';
    else if (quote_ == 0 && !is_blank(c)) {
        state_ = State::tag;
        in_tag(c);
    } else if (!is_blank(c)) {
        hides_ = is_hidden(name_);
        torn_ = false;
        quote_ = c;
        length_ = 0;
        state_ = c == '"' || c == '\'' ? State::quoted : State::unquoted;
    }
}

// A hidden value with a tag in it is hidden up to the '>' behind its quote, which may be another value's.
void Masker::in_value(char c)
{
    ++length_;
    if (hides_ && gives_up(c)) {
        state_ = State::text;
    } else if (state_ == State::unquoted) {
        empty_ = c == '/';
        if (c == '>' || is_blank(c)) {
            state_ = State::tag;
            in_tag(c);
        }
    } else if (c == quote_ && torn_ && c != '>') {
        quote_ = '>';
    } else if (c == quote_) {
        state_ = State::tag;
        in_tag(c == '>' ? c : ' ');
    } else if (c == '<') {
        torn_ = true;
    }
}

bool Masker::gives_up(char c)
{
    const bool yes = length_ > longest_ && is_break(c);
    given_up_ += yes;
    return yes;
}

void Masker::end_tag()
{
    state_ = State::text;
    if (!closing_ && !empty_ && is_hidden(element_))
        enter_secret();
}

void Masker::enter_secret()
{
    state_ = State::secret;
    open_ = "<" + element_;
    element_.insert(0, "</");
    depth_ = 0;
    length_ = 0;
    held_.clear();
}

void Masker::in_secret(char c, std::string &out)
{
    ++length_;
    if (state_ == State::section) {
        out += is_break(c) ? c : '*';
        // A third ']' or '-' keeps what the two before it have matched.
        if (c == terminator_[matched_])
            ++matched_;
        else if (c != terminator_[0])
            matched_ = 0;
        if (matched_ == terminator_.size())
            state_ = State::secret;
    } else if (state_ == State::inner) {
        out += is_break(c) ? c : '*';
        in_inner(c);
    } else if ((c == '>' || c == '/' || is_blank(c)) && held_ == open_) {
        release(out, false);
        out += is_break(c) ? c : '*';
        state_ = State::inner;
        quote_ = 0;
        empty_ = false;
        in_inner(c);
    } else if ((c == '>' || is_blank(c)) && held_ == element_ && depth_ > 0) {
        release(out, false);
        out += is_break(c) ? c : '*';
        --depth_;
    } else if ((c == '>' || is_blank(c)) && held_ == element_) {
        release(out, true);
        closing_ = true;
        state_ = State::tag;
        in_tag(c);
        out += c;
        return;
    } else if (!hold(c, out)) {
        release(out, false);
        if (!hold(c, out))
            out += is_break(c) ? c : '*';
    }
    if (gives_up(c)) {
        release(out, false);
        state_ = State::text;
    }
}

// In an open tag of the secret's own name.
void Masker::in_inner(char c)
{
    if (quote_ != 0) {
        quote_ = c == quote_ ? 0 : quote_;
    } else if (c == '"' || c == '\'') {
        quote_ = c;
    } else if (c == '>') {
        depth_ += !empty_;
        state_ = State::secret;
    }
    empty_ = c == '/';
}

// Can what is held back go on with this character?
bool Masker::hold(char c, std::string &out)
{
    for (const std::string_view start : {std::string_view(element_), std::string_view(open_), cdata, comment})
        if (held_.size() < start.size() && start[held_.size()] == c && begins_with(start, held_)) {
            held_ += c;
            if (held_ == cdata || held_ == comment) {
                terminator_ = held_ == cdata ? "]]>" : "-->";
                release(out, false);
                state_ = State::section;
                matched_ = 0;
            }
            return true;
        }
    return false;
}

void Masker::release(std::string &out, bool plainly)
{
    for (const char c : held_)
        out += plainly || is_break(c) ? c : '*';
    held_.clear();
}

} // namespace netparam
