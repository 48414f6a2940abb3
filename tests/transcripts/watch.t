The messages in a log, one line each.

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
  $ cat device.log | netparam watch
       1  12:00:01.250  md                    accepted
       2  2026-03-01 12:00:02  md                    refused: MD/width: the number is out of range
       5  12:00:03             record-decrypt-key    accepted
       5  12:00:03             ntp                   accepted, 1 note
       6  12:00:04             -                     cut: the end of <MD> is lost
       7  12:00:05             -                     unknown: no message has the root element "Other"
       8  12:00:06             -                     malformed: standard input:8:12: not well-formed XML: Error reading end tag.

With what they hold, but for secrets:

  $ cat device.log | netparam watch --details
       1  12:00:01.250  md                    accepted
    width  5
       2  2026-03-01 12:00:02  md                    refused: MD/width: the number is out of range
  standard input:3:10: refused: the number is out of range
      3 |   <width>0</width></MD>
        |          ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
       5  12:00:03             record-decrypt-key    accepted
    key  ********
       5  12:00:03             ntp                   accepted, 1 note
  standard input:5:6: note: Ntp/x is ignored: no key answers to it
       6  12:00:04             -                     cut: the end of <MD> is lost
       7  12:00:05             -                     unknown: no message has the root element "Other"
       8  12:00:06             -                     malformed: standard input:8:12: not well-formed XML: Error reading end tag.
