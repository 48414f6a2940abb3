// What a small firmware names of the library: ten messages, read and written by text, and the header.
//   firmware MESSAGE <request     prints the reply
#include <net_public.h>

#include <cstdio>
#include <cstring>

namespace {

struct Message {
    const char *name;
    int (*init)(net_param_t *, net_ext_t *);
    int (*x2s)(net_param_t *, TiXmlNode *);
    int (*s2x)(net_param_t *, TiXmlElement *);
};

const Message messages[] = {
    {"device-info", net_param_dev_info_init, net_xml_device_info_x2s, net_xml_device_info_s2x},
    {"system-general", nets_param_sys_general_init, nets_sys_general_x2s, net_sys_general_cfg_s2x},
    {"ethernet", nets_param_ethernet_init, net_ethernet_x2s, net_ethernet_s2x},
    {"dhcp", nets_param_dhcp_init, net_dhcp_x2s, net_dhcp_s2x},
    {"encoder", nets_param_enc_init, net_enc_x2s, net_enc_s2x},
    {"osd-chn", nets_param_osd_chn_init, nets_osd_chn_x2s, nets_osd_chn_s2x},
    {"pic-shelter", nets_param_pic_shelter_init, nets_pic_shelter_x2s, nets_pic_shelter_s2x},
    {"md", nets_param_md_init, net_md_x2s, net_md_s2x},
    {"record-schedule", nets_param_rec_schedule_init, net_record_schedule_x2s, net_record_schedule_s2x},
    {"record-configuration", nets_param_rec_init, nets_rec_x2s, net_record_cfg_s2x},
};

char text[16384];
char reply[16384];

int answer(const Message &message, unsigned int length)
{
    char header[] = "<Extension version=\"1.1\"><channelId>3</channelId></Extension>";
    net_ext_t extension = {};
    net_param_t param = {};
    if (net_exten_x2s(header, &extension) != 0 || message.init(&param, &extension) != 0)
        return 1;
    int result = net_text_x2s(message.x2s, &param, text, length);
    if (result == 0)
        result = net_text_s2x(message.s2x, &param, reply, sizeof reply);
    net_free(&param.data);
    if (result >= 0)
        std::puts(reply);
    return result < 0;
}

} // namespace

int main(int argc, char **argv)
{
    const std::size_t length = std::fread(text, 1, sizeof text - 1, stdin);
    for (const Message &message : messages)
        if (argc == 2 && std::strcmp(message.name, argv[1]) == 0)
            return answer(message, static_cast<unsigned int>(length));
    return 2;
}
