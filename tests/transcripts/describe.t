What a message's keys accept, and how it is written.

  $ netparam describe ethernet
  ethernet: addresses
                  The device's IP and MAC address, mask and gateway.
    initialiser   nets_param_ethernet_init, id 801
    payload       net_ethernet_v20_t, 512 bytes
    parser        net_ethernet_x2s: dataSize 512; a bad envelope logs "Func(...)
                  Line(...)"; sets inited to 2
    writer        net_ethernet_s2x, root <Ip>: dataSize 512; a bad envelope logs
                  "func:... line:..."
  
  Keys, in the order in which they are tried
    ip       char[128] ip: a text of at most 15 characters
    mask     char[128] mask: a text of at most 15 characters
    mac      char[128] mac: a text of at most 17 characters: exactly 17
             characters; checked by code of its own
    gateway  char[128] gateway: a text of at most 15 characters
  
  Written in this order
    ip, mask, mac, gateway
  $ netparam describe nets_param_ethernet_init --json | jq -c '[.name, .id, .size, .root, .title, .read_check], .read.order'
  ["ethernet",801,512,"Ip","addresses","dataSize 512; a bad envelope logs \"Func(...) Line(...)\"; sets inited to 2"]
  ["ip","mask","mac","gateway"]

Limits, words and capacities:

  $ netparam describe floodlight-task --json | jq -c '.read.keys[] | select(.key == "channel") | .range'
  [0,63]
  $ netparam describe floodlight-task --json | jq -c '.read.keys[] | select(.key == "detectType") | .words[] | select(.word == "dog_cat")'
  {"code":4194304,"word":"dog_cat","use":"both"}
  $ netparam describe floodlight-task --json |
  >     jq -c '.read.keys[] | select(.key == "FloodlightScheduleList").record.keys[] | select(.key == "item") | [.capacity, .offset, .bytes]'
  [64,8,2560]
  $ netparam describe ddns --json | jq -c '.read.keys[] | select(.key == "ddnsType") | [.words[].word], .notes'
  ["kelvo","dyndns","peatnuts","3322","no-ip"]
  ["the beginning of a word will do, and the empty text is the first word"]

Oddities are told.

  $ told() { netparam describe $1 | tr -s ' \n' ' ' | grep -o -e "$2"; }
  $ told dhcp 'only the first child is looked at'
  only the first child is looked at
  $ told ptz-preset 'net_ptz_preset_s2x: writes nothing'
  net_ptz_preset_s2x: writes nothing
  $ told osd-chn 'code of its own'
  code of its own
  $ told encoding-list "counted by the envelope's reserved1"
  counted by the envelope's reserved1
  $ told floodlight-status-report 'an item too many overwrites the last one'
  an item too many overwrites the last one
  $ told link 'a code without a word is written as "LAN"'
  a code without a word is written as "LAN"
  $ told stream-info 'host prepares the envelope'
  host prepares the envelope
  $ netparam describe support --json | jq -c '.read.keys[] | select(.key == "diskNum" or .key == "disk") | [.key, .read, .written, .notes]'
  ["diskNum",true,true,[]]
  ["disk",false,true,["only written"]]

Elements that the payload keeps in another form: bits, records that are chosen, lists that are read again.

  $ netparam describe ptz-preset --json | jq -c '[.title, .read_check, .read.order], (.read.keys[] | select(.read) | [.key, .member, .required])'
  ["presets","dataSize 21504; a bad envelope logs \"Func(...) Line(...)\"",[]]
  ["channelId",null,true]
  ["maxPresetNum",null,false]
  ["maxPresetPicNum",null,false]
  ["presetList",null,false]
  $ netparam describe ptz-preset --json |
  >     jq -c '.read.keys[] | select(.key == "presetList").record.keys[] | select(.key == "preset") | .capacity, (.record.keys[] | select(.key == "id") | .member)'
  256
  "id"
  $ netparam describe md --json | jq -c '.read.keys[] | select(.key == "scope").record.keys[].key'
  "columns"
  "rows"
  "valueTable"
  $ netparam describe md --json |
  >     jq -c '.read.keys[] | select(.key == "sensitivityInfoList").record.keys[].record.keys[] | select(.key == "sensitivity").member'
  "sensitivity"
  $ netparam describe md --json |
  >     jq -c '.read.keys[] | select(.key == "sensInfoNew").record.keys[] | select(.key == "sensInfoList").again.keys[] | select(.key == "sensInfo").record.keys[] | select(.key == "priority").required'
  true
  $ netparam describe support --json |
  >     jq -c '.read.keys[] | select(.key == "IOTsupport").record.keys[] | (select(.key == "alertorLight").record.keys[] | select(.key == "brightness").accepts), (select(.key == "smartPlug").record.keys[] | select(.key == "duration").member)'
  "smartPlug"
  "a bit, 0x400"

Lines keep within the terminal where the words allow it.

  $ netparam describe md | awk '{ longest = 46; for (i = 1; i <= NF; ++i) if (length($i) > longest) longest = length($i); if (length > longest + 34) print }'

Usage:

  $ netparam describe
  netparam: which message? "netparam list" shows them; --all describes all
  [2]
  $ netparam describe md --all
  netparam: describe takes a MESSAGE or --all, not both
  [2]
  $ netparam describe md --markdown
  netparam describe: --markdown requires --all
  See "netparam describe --help".
  [2]
  $ netparam describe md --rows
  netparam describe: --rows requires --all
  See "netparam describe --help".
  [2]
  $ netparam describe --all --json --rows
  netparam describe: --json excludes --rows
  See "netparam describe --help".
  [2]
  $ netparam describe nosuchthing
  netparam: no message is called "nosuchthing"; "netparam list" shows them all
  [2]
  $ netparam describe nets_param_led_state_init
  netparam: nets_param_led_state_init stands in the catalogue, but the library has neither parser nor writer for it
  [2]
