A whole exchange: header, request, payload, reply.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ netparam exchange norm video_standard.xml --ext motion_extension.xml
  Request, extension header
    <Extension version="1.1">
      <userName>operator</userName>
      <token>********</token>
      <password>***********</password>
      <ip>************</ip>
      <channelId>0</channelId>
    </Extension>
  Request, body
    <body>
      <Norm version="1.1">
        <norm>PAL</norm>
      </Norm>
    </body>
  Extension
    channelId 0
    userName "operator"
    token ********
  Payload, norm: prepared by the host, 4 bytes
    norm  PAL (0)
  Reply
    <Norm version="1.1">
      <norm>PAL</norm>
    </Norm>
  $ netparam exchange md motion_request.xml | grep '^[A-Z]'
  Request, body
  Extension
  Payload, md: nets_param_md_init, id 1903, 17056 bytes
  Reply

Small grids are always written in the classic size, and a reply to a request has no exceptions.

  $ netparam exchange md motion_request.xml | sed '1,/^Reply/d' | grep -e columns -e handleException
        <columns>96</columns>

As JSON:

  $ netparam exchange md motion_request.xml --json | jq -c '[.message, .size, .refused], (.reply | scan("<columns>.*"))'
  ["md",17056,null]
  "<columns>96</columns>"

Without a request: a payload of zeros is a grid of no size, written as the classic one.

  $ netparam exchange md | sed '1,/^Reply/d' | grep -e enable -e columns
      <enable>0</enable>
        <columns>96</columns>

A payload that cannot be written, and a refused request, have no reply.

  $ netparam exchange ai-area-detect >reply
  net_ai_area_detect_s2x: refused: the payload cannot be written
    member    type
    holds     none (0x0)
    written   one of these words: people, vehicle, face, dog_cat, other, package
  The library's log
    \[net_xml_alarm\.cpp:\d+\]:ai type is error (re)
  [1]
  $ grep Reply reply
  [1]
  $ echo '<MD><width>0</width></MD>' | netparam exchange md - >reply
  standard input:1:12: refused: the number is out of range
      1 | <MD><width>0</width></MD>
        |            ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  [1]
  $ grep Reply reply
  [1]
