Why the library refuses a body: where, what was read, and what would be accepted.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ refused() { # MESSAGE EXAMPLE OLD NEW
  >     grep -q -e "$3" $2.xml || echo "$3 is not there"
  >     sed "0,\\~$3~s~~$4~" $2.xml | netparam parse $1 - >/dev/null
  > }

Numbers.

  $ refused md motion_request '<endHour>18</endHour>' '<endH>25</endH>'
  standard input:17:122: note: MD/sensitivityInfoList/sensitivityInfo[2]/endH was read as endHour
  standard input:17:128: refused: the number is out of range
     17 | ...Hour><beginMinute>0</beginMinute><endH>25</endH><endMinute>0</endM...
        |                                           ^
    element   MD/sensitivityInfoList/sensitivityInfo[2]/endH  (key endHour)
    read      "25"
    accepted  a whole number from 0 to 23
  [1]
  $ refused md motion_request '<width>60<' '<width>156<'
  standard input:7:16: refused: the number is out of range
      7 |         <width>156</width>
        |                ^
    element   MD/width
    read      "156"
    accepted  a whole number from 1 to 155
  [1]
  $ refused md motion_request '<width>60<' '<width>0x3c<'
  standard input:7:16: refused: this is no whole number
      7 |         <width>0x3c</width>
        |                ^
    element   MD/width
    read      "0x3c"
    accepted  a whole number from 1 to 155
  [1]
  $ refused md motion_request '<width>60<' '<width><'
  standard input:7:9: refused: the element has no text
      7 |         <width></width>
        |         ^
    element   MD/width
    accepted  a whole number from 1 to 155
  [1]
  $ refused md motion_request '<width>60<' '<width>1234567890123<'
  standard input:7:16: refused: the number is too long
      7 |         <width>1234567890123</width>
        |                ^
    element   MD/width
    read      "1234567890123"
    accepted  a whole number from 1 to 155
  [1]
  $ refused md motion_request '<width>60</width>' '<!--wid-->'
  standard input:7:9: note: MD/(comment) was read as width
  standard input:7:9: refused: this is no element; a comment or text that answers to a key is refused
      7 |         <!--wid-->
        |         ^
    element   MD/(comment)  (key width)
    accepted  a whole number from 1 to 155
  [1]
  $ refused md motion_request '<enable>1<' '<enable>2<'
  standard input:5:17: refused: the number is out of range
      5 |         <enable>2</enable>
        |                 ^
    element   MD/enable
    read      "2"
    accepted  0 or 1
  [1]
  $ refused md motion_request '<enable>1<' '<enable>true<'
  standard input:5:17: refused: this is no whole number
      5 |         <enable>true</enable>
        |                 ^
    element   MD/enable
    read      "true"
    accepted  0 or 1
  [1]
  $ refused record-deletion record_deletion '<chnbits>9' '<chnbits>x'
  standard input:4:18: refused: this is no whole number
      4 |         <chnbits>x223372036854775811</chnbits>
        |                  ^
    element   DeleteRecordFile/chnbits
    read      "x223372036854775811"
    accepted  a whole number of at most 20 characters
  [1]
  $ refused cover-preview cover_preview '<frameNo>' '<frameNo>x'
  standard input:26:22: refused: this is no whole number
     26 |             <frameNo>x1</frameNo>
        |                      ^
    element   CoverPreview/frameList/frameNo[0]
    read      "x1"
    accepted  a whole number of at most 12 characters, at most 40 of them
  [1]
  $ refused md motion_request '<id>1</id>' '<id>2</id>'
  standard input:16:34: refused: the message's own code refuses this number
     16 |             <sensitivityInfo><id>2</id><sensitivity>20</sensitivit...
        |                                  ^
    element   MD/sensitivityInfoList/sensitivityInfo[1]/id
    read      "2"
    accepted  a whole number from 0 to 3: the period's place in the list, from 0
  [1]
  $ refused user users '<userSetState>' '<validHours>0</validHours><userSetState>'
  standard input:9:21: refused: the message's own code refuses this number
      9 |         <validHours>0</validHours><userSetState>none</userSetState...
        |                     ^
    element   UserList/User[0]/validHours[0]
    read      "0"
    accepted  a whole number from -1: -1, for ever, or a whole number of hours from 1
  The library's log
    \[net_xml_user\.cpp:\d+\]:nets_user_cfg_x2s, \d+ (re)
  [1]
  $ refused ptz-serial ptz_serial '<baudRate>2400<' '<baudRate>2401<'
  standard input:4:15: refused: the message's own code refuses this text
      4 |     <baudRate>2401</baudRate>
        |               ^
    element   Serial/baudRate
    read      "2401"
    accepted  a number: 1200, 2400, 4800 or 9600
  [1]

Words and texts.

  $ refused md motion_request Monday Mnoday
  standard input:27:51: refused: no such word; did you mean "Monday"?
     27 | ... <timeBlock><enable>1</enable><weekDay>Mnoday</weekDay><beginHour>...
        |                                           ^
    element   MD/timeBlockList/timeBlock[0]/weekDay
    read      "Mnoday"
    accepted  one of these words or its beginning: Sunday, Monday, Tuesday, Wednesday, Thursday, Friday, Saturday
  [1]
  $ refused norm video_standard '>PAL<' '>PALL<'
  standard input:4:15: refused: no such word; did you mean "PAL"?
      4 |         <norm>PALL</norm>
        |               ^
    element   Norm/norm
    read      "PALL"
    accepted  one of these words: PAL, NTSC
  [1]
  $ refused client-file-info-list file_search '<recordType>' '<recordType>none,'
  standard input:9:25: refused: "none" cannot stand beside other words
      9 |             <recordType>none,manual,sched,md,io,people,intrusion</...
        |                         ^
    element   FileInfoList/FileInfo/recordType
    read      "none,manual,sched,md,io,people,intrusion"
    accepted  a text of at most 127 characters with any of: none, manual, io, md, pir, sched, people, vehicle, face, other, dog_cat, visitor, package, intrusion, loitering, legacy, loss, cry, crossline
  [1]
  $ refused track-limit track_limit left_limit.jpg "$(printf 'l%.0s' {1..200})"
  standard input:6:24: refused: the text is too long: 200 characters
      6 |         <leftImageName>lllllllllllllllllllllllllllllllllllllllllll...
        |                        ^
    element   trackLimit/leftImageName
    read      "llllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllllll"... (200 bytes)
    accepted  a text of at most 31 characters
  [1]
  $ refused ethernet ethernet '<mac>0' '<mac>'
  standard input:5:10: refused: the message's own code refuses this text
      5 |     <mac>0:1a:2b:3c:4d:5e</mac>
        |          ^
    element   Ip/mac
    read      "0:1a:2b:3c:4d:5e"
    accepted  a text of at most 17 characters: exactly 17 characters
  [1]
  $ refused osd-chn osd_channel 'Gate (north)' 'Gate|north'
  standard input:4:11: refused: the message's own code refuses this text
      4 |     <name>Gate|north</name>
        |           ^
    element   OsdChn/name
    read      "Gate|north"
    accepted  a text of at most 31 characters: printable ASCII without $ & * / : ; < > ? \ ` |
  [1]

Children.

  $ refused norm video_standard '<norm>' '<nrm>1</nrm><norm>'
  standard input:4:9: refused: no such child is accepted here
      4 |         <nrm>1</nrm><norm>PAL</norm>
        |         ^
    element   Norm/nrm
    accepted  norm
  [1]
  $ refused md motion_request '<columns>60</columns>' ''
  standard input:9:9: refused: the child "columns" is missing
      9 |         <scope>
        |         ^
    element   MD/scope  (key columns)
    accepted  columns: a whole number from 1 to 155: those of the table
  [1]
  $ refused crossline-detect crossline_rules '<x>' '<x/><x>'
  standard input:15:31: refused: the element has no text
     15 |             <pointList><point><x/><x>0.125</x><y>0.5</y></point><p...
        |                               ^
    element   CrosslineDetect/crosslineDetectItem[0]/pointList/point[0]/x[0]
    accepted  a number
  [1]
  $ refused record-schedule record_schedule_combinations '<alarmType>' '<timeBlockList/><alarmType>'
  standard input:8:17: refused: another child is expected here
      8 |                 <timeBlockList/><alarmType>IO</alarmType>
        |                 ^
    element   Record/ScheduleList/Schedule[0]/timeBlockList[0]
    accepted  alarmType, then timeBlockList
  The library's log
    func:net_record_schedule_x2s  line:\d+------------> (re)
  [1]
  $ refused support support_camera '<chnID>' '<audioTalk>1</audioTalk><chnID>'
  standard input:39:13: refused: the child that chooses the item's record must come first
     39 |             <audioTalk>1</audioTalk><chnID>0</chnID><ptzType>3</pt...
        |             ^
    element   Support/item/audioTalk[0]
    accepted  a whole number of at most 12 characters
  The library's log
    Func\(get_item_from_xmlnode\) Line\(\d+\) (re)
    Func\(net_support_x2s\) Line\(\d+\) (re)
  [1]
  $ refused ptz-preset ptz_presets '<preset>' '<cruise/><preset>'
  standard input:7:9: refused: no such child is accepted here
      7 |         <cruise/><preset><id>0</id><command>setPos</command><name>...
        |         ^
    element   PtzPreset/presetList/cruise
    accepted  preset
  [1]
  $ echo '<MD><sensitivityInfoList/></MD>' | netparam parse md - >/dev/null
  standard input:1:5: refused: there are only 0 of "sensitivityInfo"
      1 | <MD><sensitivityInfoList/></MD>
        |     ^
    element   MD/sensitivityInfoList  (key sensitivityInfo)
    accepted  sensitivityInfo: exactly 4 elements with the children id, sensitivity, beginHour, beginMinute, endHour, endMinute, enable
  [1]
  $ echo '<MD><sensInfoNew><sensInfoList>3</sensInfoList></sensInfoNew></MD>' | netparam parse md - >/dev/null
  standard input:1:32: refused: this is no element; a comment or text is refused here
      1 | <MD><sensInfoNew><sensInfoList>3</sensInfoList></sensInfoNew></MD>
        |                                ^
    element   MD/sensInfoNew/sensInfoList/(text)
    accepted  sensInfo
  [1]
  $ netparam parse user login.xml >/dev/null
  login.xml:2:1: note: LoginUser is the root, user's is UserList
  login.xml:3:5: refused: no such child is accepted here
      3 |     <userName>owner</userName>
        |     ^
    element   LoginUser/userName
    accepted  User
  The library's log
    \[net_xml_user\.cpp:\d+\]:nets_user_cfg_x2s, \d+ (re)
  [1]

Grids, with what only the library's log tells.

  $ refused ai-area-detect ai_detect_area '<width>' '<width>9'
  standard input:14:15: refused: there is no grid of 960 x 34 cells
     14 |         <area>AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA...
        |               ^
    element   AiDetectCfg/area
    read      "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAP//////8AAP//////8A"... (340 bytes)
    accepted  a text of at most 2999 characters: the grid's cells in base64, row after row, eight to a byte
  The library's log
    \[net_xml_alarm\.cpp:\d+\]:width or height is error (re)
  [1]
  $ refused md motion_request AAD///// AD/////
  standard input:12:25: refused: this is no base64
     12 |             <valueTable>AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA...
        |                         ^
    element   MD/scope/valueTable
    read      "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"... (339 bytes)
    accepted  a text of at most 2710 characters: the grid's cells in base64, row after row, eight to a byte
  The library's log
    Func\(get_scope_from_xmlnode\) Line\(\d+\) ret\(-1\) columns\(60\) rows\(34\) (re)
  [1]
  $ refused md motion_request '<columns>60<' '<columns>61<'
  standard input:12:25: refused: these are 2040 cells, but a grid of 61 x 34 has 2080, filled up to whole bytes
     12 |             <valueTable>AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA...
        |                         ^
    element   MD/scope/valueTable
    read      "AAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAAA"... (340 bytes)
    accepted  a text of at most 2710 characters: the grid's cells in base64, row after row, eight to a byte
  The library's log
    Func\(get_scope_from_xmlnode\) Line\(\d+\) ret\(2040\) columns\(61\) rows\(34\) (re)
  [1]

An extension header that is none.

  $ netparam parse md motion_request.xml --ext motion_request.xml >/dev/null
  motion_request.xml:2:1: refused: this is no extension header
      2 | <body>
        | ^
    element   body
    accepted  a root element called Extension
  [1]

The caret points at the text, and what was read before is shown.

  $ printf '<MD>\n\t<height>70</height><width>0</width>\n</MD>' | netparam parse md - --nonzero
  md: nets_param_md_init, id 1903, 17056 bytes, as far as it was read
    height  70
  standard input:2:28: refused: the number is out of range
      2 |  <height>70</height><width>0</width>
        |                            ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  [1]

As JSON, and as the commands of a workflow.

  $ echo '<MD><width>0</width></MD>' | netparam parse md - --json | jq -c .refused
  {"file":"standard input","line":1,"column":12,"element":"MD/width","key":"width","read":"0","accepted":"a whole number from 1 to 155","reason":"the number is out of range"}
  $ echo '<MD><enabel/><width>0</width></MD>' >body.xml
  $ netparam parse md body.xml --format github-actions
  ::warning file=body.xml,line=1,col=5,title=ignored::MD/enabel is ignored: no key answers to it; did you mean enable?
  ::error file=body.xml,line=1,col=21,title=refused::MD/width: the number is out of range%0Aread "0"%0Aaccepted a whole number from 1 to 155
  [1]
  $ netparam exchange md body.xml --format github-actions >/dev/null
  ::warning file=body.xml,line=1,col=5,title=ignored::MD/enabel is ignored: no key answers to it; did you mean enable?
  ::error file=body.xml,line=1,col=21,title=refused::MD/width: the number is out of range%0Aread "0"%0Aaccepted a whole number from 1 to 155
  [1]
  $ netparam exchange md body.xml --json | jq -c '[.refused.element, .refused.read]'
  ["MD/width","0"]
  $ netparam check --message md body.xml --json | jq -c '.files[] | [.result, .refused.element]'
  ["refused","MD/width"]
  $ netparam parse nosuch body.xml --format github-actions
  ::error title=netparam::no message is called "nosuch"; "netparam list" shows them all
  [2]
  $ netparam parse md no-such-file --format github-actions
  ::error title=netparam::no-such-file: No such file or directory
  [3]
  $ echo '<MD' | netparam parse md - --format github-actions
  ::error title=malformed::not well-formed XML: Error reading Attributes.
  [4]
  $ echo '<MD><width>a:100%,&#10;</width></MD>' >50%,a:b.xml
  $ netparam parse md 50%,a:b.xml --format github-actions
  ::error file=50%25%2Ca%3Ab.xml,line=1,col=12,title=refused::MD/width: this is no whole number%0Aread "a:100%25,\x0a"%0Aaccepted a whole number from 1 to 155
  [1]
