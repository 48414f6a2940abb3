/**
 * @file net_text.h
 * The text route: from a request's text straight into the payload, from the payload straight to the reply's text. The
 * XML library takes no part; what is read, stored, logged and written is the same as through its trees.
 *
 *     net_param_t param;
 *     nets_param_md_init(&param, &ext);
 *     net_text_x2s(net_md_x2s, &param, request, length);       // in place of Parse() and net_md_x2s()
 *     ...
 *     net_text_s2x(net_md_s2x, &param, reply, sizeof(reply));  // in place of net_md_s2x() and a printer
 *     net_free(&param.data);
 *
 * A message's own parser or writer is the key to it, so that a statically linked firmware contains the messages that it
 * names and no others. It is called with a handle that only this library can read: no function of the host's own may be
 * passed, not even one that only calls a parser or a writer, and nothing but the message parsers
 * `int <name>_x2s(net_param_t *, TiXmlNode *)` and the message writers `int <name>_s2x(net_param_t *, TiXmlElement *)`.
 * The library cannot tell them from others. nets_dst_cfg_s2x(), which has a parser's type, is none; it and the two
 * writers that do not take an envelope have functions of their own below.
 */
#ifndef NET_TEXT_H
#define NET_TEXT_H

#include "net_types.h"
#include "net_xml_ptz.h"
#include "net_xml_stream.h"
#include "net_xml_system.h"

/**
 * Reads a request. The message's element is the text's root or, where the root is called "body", the first element in
 * it.
 *
 * The whole text is read before the first value is stored, without recursion and in time that is linear in its length.
 * What the XML library reads is read as it reads it, with one exception: more than 64 attributes in one element are
 * refused. Nothing behind `text[length]` is looked at; a text that ends inside a UTF-8 sequence is refused.
 *
 * One block is allocated by net_malloc() and released before the call returns: for ordinary texts at most as large as
 * the text on a 32-bit system (half again as large on a 64-bit one). Where it does not do, for texts of little but
 * tags, a larger one takes its place; the two together have up to 6.5 times (13 times) the size of a text of some
 * length.
 *
 * @param x2s    One of this library's message parsers, such as net_md_x2s(). Nothing else: see above.
 * @param param  The envelope, handed to the parser as it is.
 * @param text   The request, which is changed in place: afterwards it is of no use. Payloads do not point into it.
 * @param length Its length in bytes, less than 134,217,728; text[length] is 0. An earlier 0 ends the text.
 * @return 0, or -1: the text is malformed (the payload and `inited` are as they were; an error line says what is wrong
 *         in which line and column), or there was no memory, or the parser refused it (and leaves what it leaves of a
 *         tree).
 */
NETPUBLIC_API int net_text_x2s(int (*x2s)(net_param_t *, TiXmlNode *), net_param_t *param, char *text,
                               unsigned int length);

/**
 * Writes a reply: the message's element, as the XML library prints it without indentation and line breaks. Nothing is
 * allocated.
 *
 * @param s2x   One of this library's message writers, such as net_md_s2x(). Nothing else: see above.
 * @param param The envelope, handed to the writer as it is.
 * @param text  The buffer. The text in it is terminated, also where it is cut because it does not fit.
 * @param size  Its size in bytes; 0 only asks for the length, and then the buffer may be null.
 * @return The length of the whole text, whether it fits or not (it does if the length is less than `size`), or -1 where
 *         the writer fails; the text is empty then. A message without a reply has the length 0.
 */
NETPUBLIC_API int net_text_s2x(int (*s2x)(net_param_t *, TiXmlElement *), net_param_t *param, char *text,
                               unsigned int size);

/** net_text_s2x() for nets_dst_cfg_s2x(), whose parent is a node. */
inline int net_text_dst_cfg_s2x(net_param_t *param, char *text, unsigned int size)
{
    return net_text_s2x(
        [](net_param_t *envelope, TiXmlElement *parent) {
            return nets_dst_cfg_s2x(envelope, reinterpret_cast<TiXmlNode *>(parent));
        },
        param, text, size);
}

/** net_text_s2x() for net_ptz_param_s2x(), which takes its record without an envelope. */
inline int net_text_ptz_param_s2x(tag_net_ptz_param_v20_t *record, char *text, unsigned int size)
{
    net_param_t envelope = {};
    envelope.data = record;
    return net_text_s2x(
        [](net_param_t *param, TiXmlElement *parent) {
            return net_ptz_param_s2x(static_cast<tag_net_ptz_param_v20_t *>(param->data), parent);
        },
        &envelope, text, size);
}

/**
 * net_text_s2x() for xml_enc_info_list_s2x(), which writes the list page by page and takes no envelope. The cursor
 * moves on, too, where the page is cut or only its length is asked for.
 */
inline int net_text_enc_info_list_s2x(net_stream_info_v20_t *entries, int count, int *cursor, int budget, char *text,
                                      unsigned int size)
{
    struct {
        net_stream_info_v20_t *entries;
        int count;
        int *cursor;
        int budget;
    } page = {entries, count, cursor, budget};
    net_param_t envelope = {};
    envelope.data = &page;
    return net_text_s2x(
        [](net_param_t *param, TiXmlElement *parent) {
            const auto &asked = *static_cast<decltype(page) *>(param->data);
            return xml_enc_info_list_s2x(asked.entries, asked.count, parent, asked.cursor, asked.budget);
        },
        &envelope, text, size);
}

#endif
