What the firmware gets from a body.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

The payload, field by field; grids, weeks and months are drawn.

  $ netparam parse md motion_request.xml --only sensitivityInfoList/sensitivityInfo[1]
  md: nets_param_md_init, id 1903, 17056 bytes
    sensitivityInfoList/sensitivityInfo[1]/sensitivity  20
    sensitivityInfoList/sensitivityInfo[1]/beginHour  6
    sensitivityInfoList/sensitivityInfo[1]/beginMinute  0
    sensitivityInfoList/sensitivityInfo[1]/endHour  12
    sensitivityInfoList/sensitivityInfo[1]/endMinute  0
    sensitivityInfoList/sensitivityInfo[1]/enable  1
  $ netparam parse md motion_request.xml --only handleException
  md: nets_param_md_init, id 1903, 17056 bytes
    handleException/handleType     rec,ftp,push (0x244)
    handleException/chnHandleType  1,0,0,1 and 60 zeros
    handleException/relAlarmOut    0,1 and 94 zeros
  $ netparam parse md motion_request.xml --only scope
  md: nets_param_md_init, id 1903, 17056 bytes
    scope  60 x 34 cells, 432 set
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ..........####################################..............
        ..........####################################..............
        ..........####################################..............
        ..........####################################..............
        ..........##########.........#################..............
        ..........##########.........#################..............
        ..........##########.........#################..............
        ..........##########.........#################..............
        ..........####################################..............
        ..........####################################..............
        ..........####################################..............
        ..........####################################..............
        ..........####################################..............
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
        ............................................................
  $ netparam parse md motion_request.xml --only timeBlockList
  md: nets_param_md_init, id 1903, 17056 bytes
    timeBlockList/timeBlock  56 of 168 hours
                   0     6     12    18
        Sunday     ############..##########
        Monday     ........##########......
        Tuesday    ........................
        Wednesday  ........................
        Thursday   ........................
        Friday     ........................
        Saturday   ########################
  $ netparam parse record-schedule record_schedule_combinations.xml --only typeScheduleList
  record-schedule: nets_param_rec_schedule_init, id 1101, 1368 bytes
    typeScheduleList  MD
                   0     6     12    18
        Sunday     aaaaaabbbbbbbbbbbbbbbb..
        Monday     aaaaaabbccccccccccbbbb..
        Tuesday    aaaaaabbccccccccccbbbb..
        Wednesday  aaaaaabbccccccccccbbbb..
        Thursday   aaaaaabbccccccccccbbbb..
        Friday     aaaaaabbccccccccccbbbb..
        Saturday   aaaaaabbbbbbbbbbbbbbbb..
        a = IO
        b = MD
        c = Normal
  $ netparam parse day-record day_records.xml --only DayRecordList/DayRecord[0]/dayTypeList
  day-record: net_param_day_record_init, id 5701, 688 bytes
    DayRecordList/DayRecord[0]/dayTypeList/dayType  5 of 31 days
        1   5    10   15   20   25   30
        nA..a............A............n
        . = none, n = normal, a = alarm, A = all
  day_records.xml:22:17: note: DayRecords/DayRecordList/DayRecord[0]/index is ignored: no key answers to it
  day_records.xml:49:17: note: DayRecords/DayRecordList/DayRecord[1]/index is ignored: no key answers to it
  $ netparam parse ptz-cruise ptz_cruises.xml --only keyPos[0]/valueTable | grep Monday
        Monday     ........##########......
  $ netparam parse ai-track-task track_schedule.xml --only timeTable | grep Monday
        Monday     .......###########......

Grids that are stored by columns are drawn alike: of 10 x 2 cells the first row is set, and the first cell of the second.

  $ echo '<A><chn>1</chn><faceArea><width>10</width><height>2</height><area>/+AA</area></faceArea></A>' |
  >     netparam parse alarm-area - --only faceArea/area
  alarm-area: nets_param_alarm_area_init, id 6700, 108564 bytes
    faceArea/area  10 x 2 cells, 11 set
        ##########
        #.........
  standard input:1:1: note: A is the root, alarm-area's is AlarmArea

Codes show their words, sets and masks of bits, too.

  $ netparam parse norm video_standard.xml
  norm: prepared by the host, 4 bytes
    norm  PAL (0)
  $ netparam parse alarm-report alarm_report.xml --only AlarmEvent[0]/smartAiTypeList
  alarm-report: net_param_alarm_init, id 1501, 224 bytes
    AlarmEvent[0]/smartAiTypeList/pts           5400000000
    AlarmEvent[0]/smartAiTypeList/frameIndex    90210
    AlarmEvent[0]/smartAiTypeList/events        crossline_0,crossline_1,crossline_2,loitering_0
    AlarmEvent[0]/smartAiTypeList/crossline[0]  people (0x1)
    AlarmEvent[0]/smartAiTypeList/crossline[1]  people,vehicle (0x3)
    AlarmEvent[0]/smartAiTypeList/crossline[2]  dog_cat (0x4)
    AlarmEvent[0]/smartAiTypeList/intrusion     no items
    AlarmEvent[0]/smartAiTypeList/loitering[0]  people (0x1)

Only a part of it.

  $ netparam parse md motion_request.xml --flat | grep -e 'sensitivityInfo\[1\]' -e handleType -e ^scope
  sensitivityInfoList/sensitivityInfo[1]/sensitivity = 20
  sensitivityInfoList/sensitivityInfo[1]/beginHour = 6
  sensitivityInfoList/sensitivityInfo[1]/beginMinute = 0
  sensitivityInfoList/sensitivityInfo[1]/endHour = 12
  sensitivityInfoList/sensitivityInfo[1]/endMinute = 0
  sensitivityInfoList/sensitivityInfo[1]/enable = 1
  handleException/handleType = "rec,ftp,push"
  scope = 60 x 34 cells, 432 set
  $ netparam parse md motion_request.xml --flat --only sensitivityInfoList/sensitivityInfo[1]
  sensitivityInfoList/sensitivityInfo[1]/sensitivity = 20
  sensitivityInfoList/sensitivityInfo[1]/beginHour = 6
  sensitivityInfoList/sensitivityInfo[1]/beginMinute = 0
  sensitivityInfoList/sensitivityInfo[1]/endHour = 12
  sensitivityInfoList/sensitivityInfo[1]/endMinute = 0
  sensitivityInfoList/sensitivityInfo[1]/enable = 1
  $ netparam parse md motion_request.xml --flat --nonzero --only sensitivityInfoList
  sensitivityInfoList/sensitivityInfo[0]/sensitivity = 9
  sensitivityInfoList/sensitivityInfo[0]/endHour = 6
  sensitivityInfoList/sensitivityInfo[0]/enable = 1
  sensitivityInfoList/sensitivityInfo[1]/sensitivity = 20
  sensitivityInfoList/sensitivityInfo[1]/beginHour = 6
  sensitivityInfoList/sensitivityInfo[1]/endHour = 12
  sensitivityInfoList/sensitivityInfo[1]/enable = 1
  sensitivityInfoList/sensitivityInfo[2]/sensitivity = 20
  sensitivityInfoList/sensitivityInfo[2]/beginHour = 12
  sensitivityInfoList/sensitivityInfo[2]/endHour = 18
  sensitivityInfoList/sensitivityInfo[2]/enable = 1
  sensitivityInfoList/sensitivityInfo[3]/sensitivity = 9
  sensitivityInfoList/sensitivityInfo[3]/beginHour = 18
  sensitivityInfoList/sensitivityInfo[3]/endHour = 23
  sensitivityInfoList/sensitivityInfo[3]/endMinute = 59
  sensitivityInfoList/sensitivityInfo[3]/enable = 1
  $ netparam parse md motion_request.xml --only scop
  netparam: the payload has no "scop"; did you mean scope?
  [2]

The body is the root, or the first element in a root called "body".

  $ echo '<MD><width>7</width></MD>' | netparam parse md - --only width
  md: nets_param_md_init, id 1903, 17056 bytes
    width  7
  $ echo '<BODY><!-- x --><MD><width>7</width></MD></BODY>' | netparam parse md - --only width
  md: nets_param_md_init, id 1903, 17056 bytes
    width  7

With a file alone, its root element and its children say which message it is.

  $ netparam parse ntp.xml
  ntp: prepared by the host, 276 bytes
    enable               1
    server               "pool.ntp.org"
    synchronizeInterval  1440
    port                 123
  $ netparam parse ntp.xml | diff - <(netparam parse ntp ntp.xml)
  $ echo '<Other/>' | netparam parse -
  netparam: -: no message has the root element "Other"
  [5]

The extension header reaches the initialiser.

  $ echo '<Extension><channelId>5</channelId></Extension>' >extension.xml
  $ echo '<MD/>' | netparam parse md - --ext extension.xml --only channelId
  md: nets_param_md_init, id 1903, 17056 bytes
    channelId  5

An input that the device does not have:

  $ printf '<Extension>\n<inputId>3</inputId></Extension>' >extension.xml
  $ netparam parse md motion_request.xml --ext extension.xml --alarm-inputs 4 --quiet
  motion_request.xml: md accepted
  $ netparam parse md motion_request.xml --ext extension.xml --alarm-inputs 3 >/dev/null
  extension.xml:2:10: refused: the number is refused
      2 | <inputId>3</inputId></Extension>
        |          ^
    element   Extension/inputId
    read      "3"
    accepted  a whole number from 0, less than the device has alarm inputs
  The library's log
    \[net_xml_public\.cpp:\d+\]:query error\. inputId\(3\) (re)
  [1]
  $ netparam parse md motion_request.xml --ext motion_request.xml >/dev/null
  motion_request.xml:2:1: refused: this is no extension header
      2 | <body>
        | ^
    element   body
    accepted  a root element called Extension
  [1]

What has no effect is noted.

  $ printf '<MD>\n<enabel>1</enabel><!-- c --></MD>' | netparam parse md - >/dev/null
  standard input:2:1: note: MD/enabel is ignored: no key answers to it; did you mean enable?
  $ printf '<body><Ntp/><MD>\n<width>0</width></MD></body>' | netparam parse md - >/dev/null
  standard input:1:7: note: Ntp stands beside MD and is not read
  standard input:2:8: refused: the number is out of range
      2 | <width>0</width></MD></body>
        |        ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  [1]
  $ echo '<Ntp/>' | netparam parse md - >/dev/null
  standard input:1:1: note: Ntp is the root, md's is MD
  $ types() { printf "<MD><handleException>\n<handleType>$1</handleType></handleException></MD>" | netparam parse md - >/dev/null; }
  $ types bogus,rec
  standard input:2:13: note: MD/handleException/handleType "bogus" is no word of the set and is ignored
  $ types recc
  standard input:2:13: note: MD/handleException/handleType "recc" is read as rec
  $ types ' REC , none'

JSON bears the names of the rows.

  $ netparam parse md motion_request.xml --json | jq -c '[.message, .id, .inited, .refused, (.payload.scope | length)]'
  ["md",1903,2,null,34]
  $ netparam parse md motion_request.xml --json | jq -c '.payload | .scope[8], .sensitivityInfoList.sensitivityInfo[3], .handleException.handleType'
  "000000000011111111111111111111111111111111111100000000000000"
  {"sensitivity":9,"beginHour":18,"beginMinute":0,"endHour":23,"endMinute":59,"enable":1}
  "rec,ftp,push"
  $ netparam parse md motion_request.xml --json | cmp - <(netparam parse md motion_request.xml --format json)
  $ printf '<imageFileInfo><imageName>\xff\x01&#x1b;</imageName></imageFileInfo>' | netparam parse image-file-info - --json | jq -a .payload.imageName
  "\ufffd\u0001\u001b"

Texts cannot steer the terminal.

  $ printf '<MD>\n<width>\x1b[2J&#x1b;]0;x&#7;</width></MD>' | netparam parse md - --only width
  md: nets_param_md_init, id 1903, 17056 bytes, as far as it was read
    width  0
  standard input:2:8: refused: this is no whole number
      2 | <width>\x1b[2J&#x1b;]0;x&#7;</width></MD>
        |        ^
    element   MD/width
    read      "\x1b[2J\x1b]0;x\x07"
    accepted  a whole number from 1 to 155
  [1]
