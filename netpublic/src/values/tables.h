// The word tables that several message families share.
#ifndef NETPUBLIC_TABLES_H
#define NETPUBLIC_TABLES_H

#include "ground/words.h"

namespace netpublic {

inline constexpr Word weekday_list[] = {
    {0, "Sunday"}, {1, "Monday"}, {2, "Tuesday"}, {3, "Wednesday"}, {4, "Thursday"}, {5, "Friday"}, {6, "Saturday"},
};
inline constexpr auto weekdays = words<weekday_list>();

// Code 3 is looked up with a leading blank and written without it: what is written for it cannot be
// read back. Peers depend on both spellings.
inline constexpr Word date_format_list[] = {
    {0, "MDY"},    {1, "YMD"},    {2, "DMY"}, {3, " MDY_CN", Use::read}, {3, "MDY_CN", Use::write},
    {4, "YMD_CN"}, {5, "DMY_CN"},
};
inline constexpr auto date_formats = words<date_format_list>();

inline constexpr int language_english = 1; // also written for codes above the last
inline constexpr int language_last = 18;
inline constexpr Word language_list[] = {
    {0, "Chinese"},   {1, "English"},  {2, "Japanese"}, {3, "Russian"}, {4, "Italian"},
    {5, "Czech"},     {6, "Romania"},  {7, "Hungary"},  {8, "France"},  {9, "Spanish"},
    {10, "Portugal"}, {11, "Korean"},  {12, "BigCHN"},  {13, "Polish"}, {14, "Bulgarian"},
    {15, "German"},   {16, "Persian"}, {17, "Thai"},    {18, "Hebrew"},
};
inline constexpr auto languages = words<language_list>();

inline constexpr Word data_bit_list[] = {{0, "CS8"}, {1, "CS7"}, {2, "CS6"}, {3, "CS5"}};
inline constexpr auto data_bits = words<data_bit_list>();

inline constexpr Word stream_type_list[] = {
    {0, "mainStream"}, {1, "subStream"}, {2, "mobileStream"}, {3, "snapStream"}, {4, "externStream"},
};
inline constexpr auto stream_types = words<stream_type_list>();

// The streams that carry video: without the snapshots, whose code stays free.
inline constexpr Word video_stream_list[] = {
    {0, "mainStream"}, {1, "subStream"}, {2, "mobileStream"}, {4, "externStream"}};
inline constexpr auto video_streams = words<video_stream_list>();

// Code 0 also stands for the codes without a spelling.
inline constexpr Word ptz_mode_list[] = {{0, "none"}, {1, "af"}, {2, "ptz"}, {3, "pt"}, {4, "p"}};
inline constexpr auto ptz_modes = words<ptz_mode_list>();

// The codes are bits.
inline constexpr Word alarm_action_list[] = {
    {0x1, "io"},   {0x2, "snap"}, {0x4, "rec"},     {0x8, "led"},         {0x10, "buzz"},
    {0x20, "ptz"}, {0x40, "ftp"}, {0x80, "screen"}, {0x100, "rfspeaker"}, {0x200, "push"},
};
inline constexpr auto alarm_actions = words<alarm_action_list>();

// In the order in which a text is searched for them; the last one found counts. "loss" stands behind
// "videoloss", which contains it, so "videoloss" reads as "loss": peers depend on it.
inline constexpr int smart_ai_first = 29; // five detections of three rules each; the word's code is rule 0's
inline constexpr int smart_ai_last = 43;
inline constexpr int smart_ai_rules = 3;
inline constexpr Word alarm_type_list[] = {
    {2, "IO"},       {0, "MD"},         {8, "RF"},       {1, "videoloss"},  {16, "Normal"},  {18, "people"},
    {19, "vehicle"}, {20, "face"},      {21, "other"},   {22, "dog_cat"},   {23, "visitor"}, {27, "package"},
    {44, "cry"},     {29, "crossline"}, {32, "intrude"}, {35, "loitering"}, {38, "legacy"},  {41, "loss"},
};
inline constexpr auto alarm_types = words<alarm_type_list>();
inline constexpr int alarm_type_last = 44;

} // namespace netpublic

#endif
