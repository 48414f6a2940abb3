// Stands in for the string class of TinyXML, for compiling only: one pointer, where std::string has three or four
// words.
#ifndef TINYSTR_STAND_IN_H
#define TINYSTR_STAND_IN_H

#include <cstddef>

#define TIXML_EXPLICIT explicit

class TiXmlString {
public:
    static const std::size_t npos;
    TiXmlString();
    TiXmlString(const TiXmlString &);
    TiXmlString(const char *);
    ~TiXmlString();
    TiXmlString &operator=(const TiXmlString &);
    TiXmlString &operator=(const char *);
    TiXmlString &operator+=(const TiXmlString &);
    TiXmlString &operator+=(const char *);
    TiXmlString &operator+=(char);
    const char *c_str() const;
    const char *data() const;
    std::size_t size() const;
    std::size_t length() const;
    bool empty() const;

private:
    char *text;
};

bool operator==(const TiXmlString &, const TiXmlString &);
bool operator==(const TiXmlString &, const char *);
bool operator<(const TiXmlString &, const TiXmlString &);
bool operator>(const TiXmlString &, const TiXmlString &);

#endif
