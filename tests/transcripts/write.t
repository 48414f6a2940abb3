A body from a payload in JSON.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ echo '{"norm": "NTSC"}' | netparam write norm -
  <Norm version="1.1">
    <norm>NTSC</norm>
  </Norm>
  $ netparam write crossline-detect crossline_payload.json | grep direction
      <direction>both</direction>
      <direction>clockwise</direction>
      <direction>antiClockwise</direction>
  $ netparam write ai-cfg ai_settings_payload.json | grep detectType
    <detectType>people,vehicle,dog_cat</detectType>
  $ netparam write record-schedule record_schedule_payload.json | grep channelId
    <channelId>3</channelId>

The library reads what it writes.

  $ while read message file; do
  >     netparam write $message $file.json | netparam parse $message - --quiet
  > done <<END
  > ai-cfg ai_settings_payload
  > crossline-detect crossline_payload
  > record-schedule record_schedule_payload
  > md motion_payload
  > END
  standard input: ai-cfg accepted
  standard input: crossline-detect accepted
  standard input: record-schedule accepted
  standard input: md accepted

Small grids are always written in the classic size.

  $ netparam write md motion_payload.json | grep columns
      <columns>96</columns>

What the JSON does not name stays as the initialiser leaves it, as a channel from the header; and what the parser would refuse, the writer may not mind.

  $ grep channelId motion_extension.xml
      <channelId>0</channelId>
  $ echo '{"width": -7}' | netparam write osd-date - --ext motion_extension.xml | grep -e channelId -e width
    <channelId>0</channelId>
    <width>-7</width>

Words, their codes, texts and arrays mean the same; so do a whole output of "parse" and its payload.

  $ types() { jq -c "{payload: (.detectType = $1)}" ai_settings_payload.json | netparam write ai-cfg - | grep detectType; }
  $ types '["dog_cat", "PEOPLE", "vehicle"]'
    <detectType>people,vehicle,dog_cat</detectType>
  $ types '" vehicle , people,dog_cat"'
    <detectType>people,vehicle,dog_cat</detectType>
  $ types 4980736
    <detectType>people,vehicle,dog_cat</detectType>
  $ for language in '"Chinese"' '"chinese"' 0; do echo "{\"language\": $language}" | netparam write osd-date - | grep language; done
    <language>Chinese</language>
    <language>Chinese</language>
    <language>Chinese</language>

What does not reach the body is named.

  $ printf '{\n "usepir": 1,\n "handleException": {"handleType": "rec"}}' | netparam write md - >/dev/null
  standard input:3:36: note: handleException/handleType (rec (0x4)) does not reach the body
  $ echo '{"handleException": {"handleType": "rec"}}' | netparam write md - --strict
  standard input:1:36: refused: handleException/handleType (rec (0x4)) does not reach the body
  [1]
  $ echo '{"key": "hunter2"}' | netparam write record-key-and-prompt - >/dev/null
  standard input:1:9: note: key (********) does not reach the body

A payload that cannot be written: the member that is to blame.

  $ write() { printf "$2" | netparam write $1 -; }
  $ write ai-area-detect '{}'
  standard input: refused: the payload cannot be written
    member    type
    holds     none (0x0)
    written   one of these words: people, vehicle, face, dog_cat, other, package
  The library's log
    \[net_xml_alarm\.cpp:\d+\]:ai type is error (re)
  [1]
  $ write ai-area-detect '{"payload": {\n  "type": 77}}'
  standard input:2:11: refused: the payload cannot be written
    member    type
    holds     (0x4d)
    written   one of these words: people, vehicle, face, dog_cat, other, package
  The library's log
    \[net_xml_alarm\.cpp:\d+\]:ai type is error (re)
  [1]
  $ echo '{"type": 77}' | netparam write ai-area-detect - --json | jq -c .refused
  {"file":"standard input","line":1,"column":10,"element":"type","key":"type","read":"(0x4d)","accepted":"one of these words: people, vehicle, face, dog_cat, other, package","reason":"the payload cannot be written"}
  $ write ptz-serial '{"dataBit": 5}'
  standard input:1:13: refused: the payload cannot be written
    member    dataBit
    holds     5 (has no word)
    written   one of these words: CS8, CS7, CS6, CS5
  [1]
  $ write alarm-area '{}'
  netparam: alarm-area has no writer: it is only parsed
  [2]
  $ netparam write md no-such-file
  netparam: no-such-file: No such file or directory
  [3]

JSON that is not well-formed:

  $ write md '{"width": 60,\n  "height" 34}'
  netparam: standard input:2:13: not well-formed JSON: syntax error while parsing object separator - unexpected number literal; expected ':'
  [4]
  $ write md ''
  netparam: standard input:1:1: not well-formed JSON: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal
  [4]
  $ write md '{"width": "\xff"}'
  netparam: standard input:1:12: not well-formed JSON: syntax error while parsing value - invalid string: ill-formed UTF-8 byte; last read: '"\xff'
  [4]
  $ write md '{"width": 1, "width": 2}'
  netparam: standard input: the member "width" is given twice in an object
  [4]
  $ head -c 100000 /dev/zero | tr '\0' '[' | netparam write md -
  netparam: standard input:1:100001: not well-formed JSON: syntax error while parsing value - unexpected end of input; expected '[', '{', or a literal
  [4]
  $ write ptz-cruise '{'
  netparam: standard input:1:2: not well-formed JSON: syntax error while parsing object key - unexpected end of input; expected string literal
  [4]

What is no such payload:

  $ write md '{"message": "ntp", "payload": {}}'
  netparam: standard input: this is a payload of "ntp", not of "md"
  [1]
  $ write md '[]'
  standard input:1:1: refused: this is no object
    member    (the payload itself)
    read      an array of 0
    accepted  an object with any of: channelId, enable, usepir, width, height, sensitivityInfoList, sensInfoNew, timeBlockList, handleException, scope
  [1]
  $ write md '{"widht": 60}'
  standard input:1:11: refused: there is no such member; did you mean width?
    member    widht
    read      60
    accepted  channelId, enable, usepir, width, height, sensitivityInfoList, sensInfoNew, timeBlockList, handleException, scope
  [1]
  $ write md '{"sensitivityInfoList": {"sensitivityInfo": [{}, {"endHuor": 1}]}}'
  standard input:1:62: refused: there is no such member; did you mean endHour?
    member    sensitivityInfoList/sensitivityInfo[1]/endHuor
    read      1
    accepted  sensitivity, beginHour, beginMinute, endHour, endMinute, enable
  [1]

Numbers:

  $ write md '{"width": "60"}'
  standard input:1:11: refused: this is no whole number
    member    width
    read      "60"
    accepted  a whole number from -2147483648 to 2147483647
  [1]
  $ echo '{"width": "60"}' | netparam write md - --json | jq -c .refused
  {"file":"standard input","line":1,"column":11,"element":"width","key":"width","read":"\"60\"","accepted":"a whole number from -2147483648 to 2147483647","reason":"this is no whole number"}
  $ write md '{"width": 1.5}'
  standard input:1:11: refused: this is no whole number
    member    width
    read      1.5
    accepted  a whole number from -2147483648 to 2147483647
  [1]
  $ write md '{"width": 2147483648}'
  standard input:1:11: refused: the number does not fit the member
    member    width
    read      2147483648
    accepted  a whole number from -2147483648 to 2147483647
  [1]
  $ write crossline-detect '{"crosslineDetectItem": [{"pointList": {"point": [{"x": 1e39}]}}]}'
  standard input:1:57: refused: the number does not fit the member
    member    crosslineDetectItem[0]/pointList/point[0]/x
    read      1e+39
    accepted  a number that fits a float, or "nan", "inf", "-inf"
  [1]

Words and texts:

  $ write md '{"handleException": {"handleType": "io,rce"}}'
  standard input:1:36: refused: no such word; did you mean "rec"?
    member    handleException/handleType
    read      "io,rce"
    accepted  any of these words, or a number: none, io, snap, rec, led, buzz, ptz, ftp, screen, rfspeaker, push
  [1]
  $ write norm '{"norm": "PLA"}'
  standard input:1:10: refused: no such word; did you mean "PAL"?
    member    norm
    read      "PLA"
    accepted  one of these words, or a number: PAL, NTSC
  [1]
  $ write dns-info "{\"dns1\": \"$(printf 'x%.0s' {1..300})\"}"
  standard input:1:10: refused: the text is too long: 300 bytes
    member    dns1
    read      "xxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxxx"... (300 bytes)
    accepted  a text of at most 15 bytes
  [1]
  $ write dns-info '{"dns1": "a\\u0000b"}'
  standard input:1:10: refused: a zero byte in the text
    member    dns1
    read      "a\x00b"
    accepted  a text of at most 15 bytes
  [1]

Lists, grids and schedules:

  $ write md '{"sensitivityInfoList": {"sensitivityInfo": [{}, {}, {}, {}, {}]}}'
  standard input:1:45: refused: the array is too long
    member    sensitivityInfoList/sensitivityInfo
    read      an array of 5
    accepted  an array of at most 4 objects
  [1]
  $ write crossline-detect '{"crosslineDetectItem": [{"pointList": {"pointNum": 3, "point": [{"x": 0}]}}]}'
  standard input:1:65: refused: pointNum is 3, which contradicts the array
    member    crosslineDetectItem[0]/pointList/point
    read      an array of 1
    accepted  an array of as many items, or no pointNum
  [1]
  $ grid() { write md "{\"width\": 4, \"height\": 2, \"scope\": $1}"; }
  $ grid '["0110"]'
  standard input:1:36: refused: the number of rows is wrong
    member    scope
    read      an array of 1
    accepted  an array of 2 rows, each a text of 4 characters 0 and 1, or an array of as many numbers
  [1]
  $ grid '["0110", "011"]'
  standard input:1:45: refused: the row has 3 cells
    member    scope[1]
    read      "011"
    accepted  a text of 4 characters 0 and 1, or an array of as many numbers
  [1]
  $ grid '["0110", "0120"]'
  standard input:1:45: refused: cell 3 is neither 0 nor 1
    member    scope[1]
    read      "0120"
    accepted  a text of 4 characters 0 and 1, or an array of as many numbers
  [1]
  $ grid '[[0, 1, 256, 0], "0000"]'
  standard input:1:44: refused: the number does not fit the member
    member    scope[0][2]
    read      256
    accepted  a whole number from 0 to 255
  [1]
  $ write md '{"timeBlockList": {"timeBlock": [\n3]}}'
  standard input:1:33: refused: the number of rows is wrong
    member    timeBlockList/timeBlock
    read      an array of 1
    accepted  an array of 7 rows, each a text of 24 characters 0 and 1, or an array of as many numbers
  [1]
  $ write record-schedule '{"typeScheduleList": {"section": [["MD"]]}}'
  standard input:1:34: refused: this is no week
    member    typeScheduleList/section
    read      an array of 1
    accepted  an array of 7 days, each an array of 24 sets of alarm types
  [1]
  $ write record-schedule '{"typeScheduleList": {"types": "MD,crossline_3"}}'
  standard input:1:32: refused: no such word; did you mean "crossline"?
    member    typeScheduleList/types
    read      "MD,crossline_3"
    accepted  any of these words, the smart detections also with _0 to _2: none, IO, MD, RF, videoloss, Normal, people, vehicle, face, other, dog_cat, visitor, package, cry, crossline, intrude, loitering, legacy, loss
  [1]
