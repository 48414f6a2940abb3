// A shared library around one call.
#include <net_public.h>

#include <string>

extern "C" __attribute__((visibility("default"))) int plugin_parse(TiXmlNode *body)
{
    net_param_t param{};
    net_ext_t ext{};
    int result = nets_param_md_init(&param, &ext);
    if (result == 0)
        result = net_md_x2s(&param, body);
    net_free(&param.data);
    return result;
}
