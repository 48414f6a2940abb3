/**
 * @file net_xml_words.h
 * The protocol's spellings: enumerated fields as words, sets of alarm types, lists of numbers, and
 * the two base64 codecs, one for detection grids and one for bytes.
 *
 * All functions are stateless and may run on any number of threads. Unless said otherwise they
 * return 0, or -1 for a null pointer, a size below 1 or a code or word that is not in the table.
 *
 * **Code to word.** The word goes to `dst`, a buffer of `size` bytes, of which at most size - 1 are
 * written: what the word leaves of them becomes zero, a longer word is cut, and the last byte stays
 * as it was. Hand over a cleared buffer; else a cut word has no terminator. A failure writes nothing.
 *
 * **Word to code.** A word may be abbreviated and its case does not matter: it finds the first entry
 * of the table that begins with it. The empty word finds code 0. A failure leaves the code alone.
 */
#ifndef NET_XML_WORDS_H
#define NET_XML_WORDS_H

#include "net_types.h"

/** @name Words of codes
 * @{ */

/** Writes the name of a weekday, 0 "Sunday" to 6 "Saturday". @return 0, or -1 */
NETPUBLIC_API int get_weekday_string(int code, char *dst, int size);
/** Reads a weekday's name; "T" is Tuesday. @return 0, or -1 */
NETPUBLIC_API int get_weekday_index(int *code, char *word);

/**
 * Writes a date format: 0 "MDY", 1 "YMD", 2 "DMY", 3 "MDY_CN", 4 "YMD_CN", 5 "DMY_CN".
 * @return 0, or -1
 */
NETPUBLIC_API int get_osd_format_string(int code, char *dst, int size);
/**
 * Reads a date format. Code 3 answers to " MDY_CN" with a leading blank only, so what
 * get_osd_format_string() writes for it is refused.
 * @return 0, or -1
 */
NETPUBLIC_API int get_osd_format_index(int *code, const char *word);

/**
 * Writes a language: 0 "Chinese", 1 "English", 2 "Japanese", 3 "Russian", 4 "Italian", 5 "Czech",
 * 6 "Romania", 7 "Hungary", 8 "France", 9 "Spanish", 10 "Portugal", 11 "Korean", 12 "BigCHN",
 * 13 "Polish", 14 "Bulgarian", 15 "German", 16 "Persian", 17 "Thai", 18 "Hebrew"; "English" for every
 * code above. @return 0, or -1 for a negative code too
 */
NETPUBLIC_API int get_language_string(int code, char *dst, int size);
/** Reads a language. An unknown one leaves @p code alone. @return 0, or -1 for a null pointer only */
NETPUBLIC_API int get_language_index(int *code, const char *word);

/** Writes the data bits of a serial line: 0 "CS8", 1 "CS7", 2 "CS6", 3 "CS5". @return 0, or -1 */
NETPUBLIC_API int get_databit_string(int code, char *dst, int size);
/** Reads the data bits of a serial line. @return 0, or -1 */
NETPUBLIC_API int get_databit_index(int *code, const char *word);

/**
 * Writes a stream type: "mainStream", "subStream", "mobileStream", "snapStream", "externStream".
 * @return @p dst, or null on failure
 */
NETPUBLIC_API char *get_streamtype_str(STREAM_TYPE_E code, char *dst, int size);
/**
 * Reads a stream type, a STREAM_TYPE_E code, from the first characters of a text.
 * @param code gets the code
 * @param word the text
 * @param len how many characters of @p word count. A text that ends earlier must be a whole word; an abbreviation
 *        is one of exactly @p len characters
 * @return 0, or -1; a @p len below 1 fails
 */
NETPUBLIC_API int get_streamtype_from_str(int *code, const char *word, int len);

/** @} */
/** @name Alarm actions
 * A bit mask: 0x1 "io", 0x2 "snap", 0x4 "rec", 0x8 "led", 0x10 "buzz", 0x20 "ptz", 0x40 "ftp",
 * 0x80 "screen", 0x100 "rfspeaker", 0x200 "push". Higher bits are ignored.
 * @{ */

/**
 * Writes the words of the set bits in that order and without anything between them ("iosnap"), or
 * "none". The words are cut at size - 2 characters; the first four bytes are cleared in any case, so
 * a buffer of four bytes or less is written whole.
 * @return 0, or -1 for a null pointer or a size below 1
 */
NETPUBLIC_API int get_handleType_string(int mask, char *dst, int size);
/**
 * Reads the words that occur anywhere in a text, whatever separates them and whatever their case. A
 * text with "none" in it is 0, and so is one without any of the words.
 * @return 0, or -1 for a null pointer
 */
NETPUBLIC_API int get_handleType_intValue(int *mask, char *text);

/** @} */
/** @name Alarm types
 * The codes 0 to 44 of time_section_t: 0 "MD", 1 "videoloss", 2 "IO", 8 "RF", 16 "Normal",
 * 18 "people", 19 "vehicle", 20 "face", 21 "other", 22 "dog_cat", 23 "visitor", 27 "package",
 * 44 "cry", and the smart-AI detections with three rules each: 29 to 31 "crossline",
 * 32 to 34 "intrude", 35 to 37 "loitering", 38 to 40 "legacy", 41 to 43 "loss".
 * @{ */

/**
 * Writes the word of an alarm type, "none" for a code without one. The first four bytes are cleared
 * first, so a buffer of four bytes or less is written whole.
 * @param code the alarm type
 * @param dst, size the buffer and its size in bytes
 * @param index gets the rule, 0 to 2, of a smart-AI code; left alone for other codes; may be null
 * @return 0, or -1 for a null @p dst or a size below 1
 */
NETPUBLIC_API int get_alarm_in_type_string(int code, char *dst, int size, int *index);
/**
 * Reads an alarm type: of all words that occur in the text, case aside, the last one in the order
 * IO, MD, RF, videoloss, Normal, people, vehicle, face, other, dog_cat, visitor, package, cry,
 * crossline, intrude, loitering, legacy, loss. So "IO,MD" is 0 and "videoloss" is 41 + index.
 * @param code left alone when the text holds none of the words
 * @param text the text
 * @param index the rule of a smart-AI word, 0 to 2
 * @return 0, or -1 for a null pointer or an index out of range
 */
NETPUBLIC_API int get_alarm_in_type_intValue(int *code, char *text, int index);

/** Adds an alarm type to a set. A null set and a code outside 0 to 44 are ignored. */
NETPUBLIC_API void alarm_in_add_event(time_section_t *set, int code);
/**
 * Tests for an alarm type.
 * @param set a time_section_t, or any two words of that form
 * @param code the alarm type
 * @return 1 when it is in the set; 0 when not, for a null set and for a code above 44
 */
NETPUBLIC_API int alarm_in_check_event(const void *set, unsigned int code);

/**
 * Finds the active rules of one smart-AI detection.
 * @param set the alarm types
 * @param name "crossline", "intrusion" (here not "intrude"), "loitering", "legacy" or "loss", exactly so
 * @param mask gets the bits of the rules in the set added, rule 0 in bit 0; it is not cleared
 * @return 1 when the set holds rule 2, 0 when not; for an unknown name a number other than 0 that
 *         may be any, 1 included; -1 for a null name
 */
NETPUBLIC_API int get_type_and_index_from_smart_ai(time_section_t set, char *name, int &mask);

/** @} */
/** @name Lists of numbers
 * @{ */

/**
 * Writes numbers as decimal text joined by commas.
 * @param dst, size the buffer and its size in bytes; the text is cut at size - 1 characters and the
 *        rest of the buffer is zero
 * @param table, count the numbers; all numbers at the end that equal @p trailing are left out, and
 *        nothing is written when that is all of them
 * @param trailing see above
 * @return 0, or -1 for a null pointer, a count or size below 1, or when net_malloc() gives no scratch
 *         memory (logged; @p dst is then empty)
 */
NETPUBLIC_API int changeIntTableToString(char *dst, int size, int *table, int count, int trailing);
/**
 * Reads numbers that are joined by commas. An item is read as atoi() does; an empty one is 0. The
 * text behind the last element is ignored.
 * @param text the text
 * @param table, count the numbers and how many there is room for
 * @param fill what the elements without an item become
 * @return the number of items stored, 0 to count; -1 for a null pointer, a count below 1, or an item
 *         of more than 30 characters, in front of which the items have been stored
 */
NETPUBLIC_API int changeStringToIntTable(char *text, int *table, int count, int fill);

/** @} */
/** @name Base64 of bit arrays
 * The bits stand one in a byte, as in a detection grid; eight of them make a byte of data, the first
 * one on top.
 * @{ */

/**
 * Encodes bits.
 * @param bits one byte per bit; anything but 0 is a 1
 * @param out gets the text, terminated. Its size is not checked: 4 characters for each 24 bits begun,
 *        2 more for each line break, 1 for the terminator
 * @param bitCount the number of bits, 0 and above
 * @param lineLength a line is broken by CR LF after the whole group (4 characters for 24 bits) with
 *        which it reaches lineLength - 3 characters; 20000 never breaks a grid
 * @return the number of characters, line breaks included; -1 for a null pointer, a negative count or
 *         when net_malloc() gives no scratch memory
 */
NETPUBLIC_API int EncodeBinaryArrayToBase64(unsigned char *bits, char *out, int bitCount, int lineLength);
/**
 * Decodes bits.
 * @param bits gets one byte per bit, 0 or 1; all maxBits bytes are written, those without data as 0
 * @param maxBits the most bits to store; 15500 for a full grid
 * @param in, inLength the text, without line breaks, and its length in characters. What follows a
 *        padded group, or the group that fills the bits, is ignored
 * @return the number of bits stored, a multiple of 8 unless it is maxBits; -1 for a null pointer, a
 *         negative maxBits, a length that is negative or no multiple of 4, or a character that is no
 *         base64 (the bits in front of its group have been stored)
 */
NETPUBLIC_API int Base64DecodeToBinaryArray(char *bits, int maxBits, char *in, int inLength);

/** @} */
/** @name Base64 of bytes
 * @{ */

/**
 * Encodes bytes, without line breaks.
 * @param out, outSize the text's buffer and its size in bytes, the terminator included
 * @param in, inLength the bytes
 * @return the number of characters; -1 for a null pointer, -3 when the text does not fit (nothing is
 *         written)
 */
NETPUBLIC_API int base64_encode(unsigned char *out, unsigned outSize, const unsigned char *in, unsigned inLength);
/**
 * Decodes bytes. The first padded group ends the data; what follows must still be base64.
 * @param out, outSize the bytes' buffer and its size; no terminator is added
 * @param in, inLength the text and its length in characters
 * @return the number of bytes; or, with nothing written: -1 for a null pointer, -2 for a length that
 *         is no multiple of 4, -3 when the data may not fit (3 bytes for each 4 characters, less the
 *         padding among the last two), -4 for a character that is no base64
 */
NETPUBLIC_API int base64_decode(unsigned char *out, unsigned outSize, const unsigned char *in, unsigned inLength);

/** @return 1 for a letter A to Z or a to z, a digit, '+', '/' or '=', else 0 */
NETPUBLIC_API int is_base64_char(char c);
/** @return the value of a base64 character, 0 to 63; 0 for '=' and everything else */
NETPUBLIC_API int GetBase64Value(char c);

/** @} */

#endif
