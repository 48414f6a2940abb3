Many bodies at once: which of them does the library accept?

  $ mkdir inner
  $ echo '<MD><width>5</width></MD>' >good.xml
  $ printf '<MD>\n<enabel>1</enabel></MD>' >inner/ignored.XML
  $ echo '<MD><width>6</width></MD>' >inner/md.2.xml
  $ printf '<MD>\n\t<width>0</width></MD>' >refused.xml
  $ printf '<MD>\n<width></MD>' >malformed.xml
  $ echo '<Stranger/>' >stranger.xml
  $ echo '<DownloadByTime/>' >several.xml
  $ echo '<Extension><channelId>3</channelId></Extension>' >header.xml
  $ echo 'no XML' >other.txt

  $ netparam check . -v
  accepted    md                        ./good.xml
  accepted    extension header          ./header.xml
  ./inner/ignored.XML:2:1: note: MD/enabel is ignored: no key answers to it; did you mean enable?
  accepted    md                        ./inner/ignored.XML
  accepted    md                        ./inner/md.2.xml
  ./malformed.xml:2:8: not well-formed XML: Error reading end tag.
      2 | <width></MD>
        |        ^
  malformed   -                         ./malformed.xml
  ./refused.xml:2:9: refused: the number is out of range
      2 |  <width>0</width></MD>
        |         ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  refused     md                        ./refused.xml
  ./several.xml: no message has the root element "DownloadByTime"
  unknown     -                         ./several.xml
  ./stranger.xml: no message has the root element "Stranger"
  unknown     -                         ./stranger.xml
  8 files: 4 accepted, 1 refused, 1 malformed, 2 unknown; 1 with parts that are not read; 3 written back
  [4]
  $ netparam check . --json | jq -c '(.files[] | [.file, .message, .result]), .summary'
  ["./good.xml","md","accepted"]
  ["./header.xml","extension header","accepted"]
  ["./inner/ignored.XML","md","accepted"]
  ["./inner/md.2.xml","md","accepted"]
  ["./malformed.xml",null,"malformed"]
  ["./refused.xml","md","refused"]
  ["./several.xml",null,"unknown"]
  ["./stranger.xml",null,"unknown"]
  {"files":8,"accepted":4,"refused":1,"malformed":1,"unknown":2,"unreadable":0,"at fault":0,"with parts that are not read":1,"written back":3,"not written back":0}

The exit code tells the worst.

  $ netparam check good.xml header.xml inner
  inner/ignored.XML:2:1: note: MD/enabel is ignored: no key answers to it; did you mean enable?
  4 files: 4 accepted; 1 with parts that are not read; 3 written back
  $ netparam check inner --strict >/dev/null
  [1]
  $ netparam check good.xml stranger.xml >/dev/null
  [5]
  $ netparam check stranger.xml refused.xml >/dev/null
  [1]
  $ netparam check refused.xml malformed.xml >/dev/null
  [4]
  $ netparam check malformed.xml no-such-file >/dev/null
  [3]
  $ netparam check
  netparam check: PATH is required
  See "netparam check --help".
  [2]
  $ netparam check good.xml refused.xml
  refused.xml:2:9: refused: the number is out of range
      2 |  <width>0</width></MD>
        |         ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  2 files: 1 accepted, 1 refused; 1 written back
  [1]

The message: as given, by a pattern, or as the file, its root element or its keys say.

  $ netparam check stranger.xml --message md
  stranger.xml:1:1: refused: Stranger is the root, md's is MD
  1 file: 1 refused
  [1]
  $ netparam check stranger.xml --message md --any-root
  stranger.xml:1:1: note: Stranger is the root, md's is MD
  1 file: 1 accepted; 1 with parts that are not read; 1 written back
  $ netparam check good.xml --message nosuch
  netparam: no message is called "nosuch"; "netparam list" shows them all
  [2]
  $ netparam check stranger.xml good.xml -v --message 'str*=md' --message good.xml=user --any-root
  stranger.xml:1:1: note: Stranger is the root, md's is MD
  accepted    md                        stranger.xml
  good.xml:1:1: note: MD is the root, user's is UserList
  good.xml:1:5: refused: no such child is accepted here
      1 | <MD><width>5</width></MD>
        |     ^
    element   MD/width
    accepted  User
  The library's log
    \[net_xml_user\.cpp:\d+\]:nets_user_cfg_x2s, \d+ (re)
  refused     user                      good.xml
  2 files: 1 accepted, 1 refused; 2 with parts that are not read; 1 written back
  [1]
  $ told() { echo "$2" >$1; netparam check $1 -v; }
  $ told a.xml '<body><Ntp/><md><width>0</width></md></body>'
  a.xml:1:13: note: md stands beside Ntp and is not read
  accepted    ntp                       a.xml
  1 file: 1 accepted; 1 with parts that are not read
  $ told b.xml '<Other><usepir>1</usepir></Other>'
  b.xml: no message has the root element "Other", but keys for its children: md
  unknown     -                         b.xml
  1 file: 1 unknown
  [5]
  $ told c.xml '<Other><usepi>1</usepi></Other>'
  c.xml: no message has the root element "Other"
  unknown     -                         c.xml
  1 file: 1 unknown
  [5]
  $ told d.xml '<ReplaySeek><seekTime/></ReplaySeek>'
  d.xml: several messages have the root element "ReplaySeek": replay-seek, new-replay-seek
  unknown     -                         d.xml
  1 file: 1 unknown
  [5]
  $ told md.xml '<Ntp/>'
  md.xml:1:1: refused: Ntp is the root, md's is MD
  refused     md                        md.xml
  1 file: 1 refused
  [1]

Shortened names are told.

  $ printf '<MD>\n<wid>5</wid></MD>' >md.xml
  $ netparam check md.xml
  md.xml:2:1: note: MD/wid was read as width
  1 file: 1 accepted; 1 written back
  $ netparam check md.xml --json | jq -c '.files[].notes'
  [{"kind":"shortened","line":2,"column":1,"element":"MD/wid","key":"width","text":"was read as width"}]

As commands of a workflow:

  $ netparam check inner/ignored.XML refused.xml malformed.xml stranger.xml --format github-actions
  ::warning file=inner/ignored.XML,line=2,col=1,title=ignored::MD/enabel is ignored: no key answers to it; did you mean enable?
  ::error file=refused.xml,line=2,col=9,title=refused::MD/width: the number is out of range%0Aread "0"%0Aaccepted a whole number from 1 to 155
  ::error file=malformed.xml,line=2,col=8,title=malformed::not well-formed XML: Error reading end tag.
  ::error file=stranger.xml,title=unknown::stranger.xml: no message has the root element "Stranger"
  4 files: 1 accepted, 1 refused, 1 malformed, 1 unknown; 1 with parts that are not read; 1 written back
  [4]

A finished log:

  $ cat >device.log <<END
  > 12:00:01.250 <- <body><MD version='1.1'><width>5</width></MD></body> sent
  > 2026-03-01 12:00:02 got <MD>
  >   <width>0</width></MD>
  > a < b, <b>bold</b>, <Ip>1.2.3.4</Ip>
  > 12:00:03 <RecordKey><key>hunter2</key></RecordKey><Ntp><x/></Ntp>
  > 12:00:04 <MD><width>
  > 12:00:05 <?xml version='1.0'?><body><Other><y/></Other></body>
  > 12:00:06 <MD><width></MD>
  > END
  $ netparam check -v device.log
  accepted    md                        device.log:1
  device.log:3:10: refused: the number is out of range
      3 |   <width>0</width></MD>
        |          ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  refused     md                        device.log:2
  accepted    record-decrypt-key        device.log:5
  device.log:5:6: note: Ntp/x is ignored: no key answers to it
  accepted    ntp                       device.log:5
  device.log:6: the body has no end
  malformed   -                         device.log:6
  device.log:7: no message has the root element "Other"
  unknown     -                         device.log:7
  device.log:8:12: not well-formed XML: Error reading end tag.
      8 | <MD><width></MD>
        |            ^
  malformed   -                         device.log:8
  7 files: 3 accepted, 1 refused, 2 malformed, 1 unknown; 1 with parts that are not read; 1 written back
  [4]
  $ echo nothing >empty.log
  $ netparam check empty.log
  empty.log: there is no message in this text
  1 file: 1 unknown
  [5]

Lines are the log's for machines, too:

  $ netparam check --json device.log | jq -c '.files[] | [.file, .refused.line, .notes[0].line]'
  ["device.log:1",null,null]
  ["device.log:2",3,null]
  ["device.log:5",null,null]
  ["device.log:5",null,5]
  ["device.log:6",null,null]
  ["device.log:7",null,null]
  ["device.log:8",null,null]
  $ netparam check --format=github-actions device.log | grep -o '^::[a-z]* file=[^,]*,line=[0-9]*'
  ::error file=device.log,line=3
  ::warning file=device.log,line=5
  ::error file=device.log,line=8
