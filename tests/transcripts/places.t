Where a value lies in the payload, and where in the text it came from.

  $ cat >ethernet.xml <<END
  > <Ip>
  >   <ip>10.0.0.2</ip>
  >   <m>255.0.0.0</m>
  >   <MAC>00:11:22:33:44:55</MAC>
  > </Ip>
  > END
  $ netparam parse ethernet ethernet.xml --memory
  ethernet: nets_param_ethernet_init, id 801, 512 bytes
     OFFSET  BYTES  TYPE       FROM  PATH     VALUE
          0    128  char[128]  2:7   ip       "10.0.0.2"
        128    128  char[128]  3:6   mask     "255.0.0.0"
        256    128  char[128]  4:8   mac      "00:11:22:33:44:55"
        384    128  char[128]  -     gateway  ""
  ethernet.xml:3:3: note: Ip/m was read as mask
  $ netparam parse ethernet ethernet.xml --json | jq -c '(.rows[] | select(.path == ("mac", "gateway"))), .notes[]'
  {"path":"mac","offset":256,"bytes":128,"type":"char[128]","from":[{"line":4,"column":8}]}
  {"path":"gateway","offset":384,"bytes":128,"type":"char[128]","from":[]}
  {"kind":"shortened","line":3,"column":3,"element":"Ip/m","key":"mask","text":"was read as mask"}

Lists: where an item has no such child, the value came from nowhere.

  $ printf '<F><FloodlightScheduleList><item><action>1</action></item>\n<item><daymap>3</daymap></item></FloodlightScheduleList></F>' |
  >     netparam parse floodlight-task - --json | jq -c '.rows[] | select(.path | test("item.1./(action|daymap)$|auto_bright$"))'
  {"path":"auto_bright","offset":44,"bytes":4,"type":"int","from":[]}
  {"path":"FloodlightScheduleList/item[1]/daymap","offset":164,"bytes":4,"type":"int","from":[{"line":2,"column":15}]}
  {"path":"FloodlightScheduleList/item[1]/action","offset":160,"bytes":4,"type":"int","from":[]}

A refused number is shown where it stood; what a message's own code reads came from its element.

  $ printf '<MD>\n<width>0</width></MD>' | netparam parse md - --json | jq -c '.rows[] | select(.path == "width")'
  {"path":"width","offset":8,"bytes":4,"type":"int","from":[{"line":2,"column":8}]}
  $ printf '<O>\n<name>door</name></O>' | netparam parse osd-chn - --json | jq -c '.rows[] | select(.path == "name")'
  {"path":"name","offset":4,"bytes":32,"type":"char[32]","from":[{"line":2,"column":7}]}

All rows lie within the payload.

  $ netparam parse md "$TESTDIR/../../examples/motion_request.xml" --json |
  >     jq -c '.size as $size | .rows | length, map(select(.offset + .bytes > $size or .type == ""))'
  43
  []
