// What a host does with the installed library: a motion request becomes a structure, the structure a
// reply. Exits 0 when the reply is the expected text.
#include <net_public.h>
#include <tinyxml.h>

#include <cstdio>
#include <string>

namespace {

const char *const request = "<MD><channelId>3</channelId><enable>1</enable><width>97</width><height>1</height>"
                            "<scope><columns>97</columns><rows>1</rows>"
                            "<valueTable>gAAAAAAAAAAAAAAAAA==</valueTable></scope>"
                            "<timeBlockList><timeBlock><enable>1</enable><weekDay>Sunday</weekDay>"
                            "<beginHour>8</beginHour><endHour>9</endHour></timeBlock></timeBlockList></MD>";

std::string expected()
{
    std::string text = "<MD version=\"1.1\"><channelId>3</channelId><enable>1</enable><usepir>0</usepir>"
                       "<width>97</width><height>1</height>"
                       "<scope><columns>97</columns><rows>1</rows>"
                       "<valueTable>gAAAAAAAAAAAAAAAAA==</valueTable></scope><sensitivityInfoList>";
    for (const char *id : {"0", "1", "2", "3"})
        text += std::string("<sensitivityInfo><id>") + id +
                "</id><sensitivity>0</sensitivity><beginHour>0</beginHour><beginMinute>0</beginMinute>"
                "<endHour>0</endHour><endMinute>0</endMinute></sensitivityInfo>";
    return text + "</sensitivityInfoList><timeBlockList><timeBlock><enable>1</enable><weekDay>Sunday</weekDay>"
                  "<beginHour>8</beginHour><endHour>9</endHour></timeBlock></timeBlockList></MD>";
}

int fail(const char *step)
{
    std::printf("%s failed\n", step);
    return 1;
}

} // namespace

int main()
{
    TiXmlDocument document;
    document.Parse(request);
    TiXmlElement reply("body");
    net_param_t param{};
    net_ext_t ext{};
    if (nets_param_md_init(&param, &ext) != 0)
        return fail("initialising");
    if (net_md_x2s(&param, document.RootElement()) != 0)
        return fail("parsing");
    if (net_md_s2x(&param, &reply) != 0)
        return fail("writing");
    net_free(&param.data);

    TiXmlPrinter printer;
    printer.SetStreamPrinting();
    reply.FirstChildElement()->Accept(&printer);
    std::printf("%s\n", printer.CStr());
    if (expected() != printer.CStr()) {
        std::printf("expected:\n%s\n", expected().c_str());
        return fail("comparing");
    }
    return 0;
}
