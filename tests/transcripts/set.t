Values change where they stand, and nothing else does.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ netparam set md motion_request.xml width=58 sensitivityInfoList/sensitivityInfo[1]/endHour=13 --diff
  --- motion_request.xml
  +++ motion_request.xml
  @@ -7 +7 @@
  -        <width>60</width>
  +        <width>58</width>
  @@ -16 +16 @@
  -            <sensitivityInfo><id>1</id><sensitivity>20</sensitivity><beginHour>6</beginHour><beginMinute>0</beginMinute><endHour>12</endHour><endMinute>0</endMinute><enable>1</enable></sensitivityInfo>
  +            <sensitivityInfo><id>1</id><sensitivity>20</sensitivity><beginHour>6</beginHour><beginMinute>0</beginMinute><endHour>13</endHour><endMinute>0</endMinute><enable>1</enable></sensitivityInfo>
  $ printf '<MD>\n<channelId>0</channelId>\n\n<width>5</width><height>6</height>\n</MD>' |
  >     netparam set md - width=7 height=8 channelId=1 --diff
  --- standard input
  +++ standard input
  @@ -2 +2 @@
  -<channelId>0</channelId>
  +<channelId>1</channelId>
  @@ -4 +4 @@
  -<width>5</width><height>6</height>
  +<width>7</width><height>8</height>

Whatever stands there:

  $ width() { printf "$1" | netparam set md - MD/width=7 && echo; }
  $ width "<MD a='>'>\n <!-- <width>9</width> --><width\n x='1' >\n 5 \n</width ></MD>"
  <MD a='>'>
   <!-- <width>9</width> --><width
   x='1' >
   7 
  </width ></MD>
  $ width '<MD>\r\n<width>5</width></MD>'
  <MD>\r (esc)
  <width>7</width></MD>
  $ width '<MD><width>5<!-- c --></width></MD>'
  <MD><width>7<!-- c --></width></MD>
  $ width '<MD><width/></MD>'
  <MD><width>7</width></MD>
  $ width '<MD><width></width></MD>'
  <MD><width>7</width></MD>
  $ width "<?xml version='1.0'?>\n<body><x/><MD><width>0</width></MD></body>"
  standard input:2:7: note: x stands beside MD and is not read
  <?xml version='1.0'?>
  <body><x/><MD><width>7</width></MD></body>

By the key, but its own name first:

  $ width '<MD><WID><![CDATA[5]]></WID></MD>'
  standard input:1:5: note: MD/WID was read as width
  <MD><WID>7</WID></MD>
  $ width '<MD><WID>5</WID><width>6</width></MD>'
  standard input:1:5: note: MD/WID was read as width
  <MD><WID>5</WID><width>7</width></MD>

Texts are escaped.

  $ echo '<imageFileInfo><imageName>d</imageName></imageFileInfo>' | netparam set image-file-info - 'imageName=a<b>&"c
  > '
  <imageFileInfo><imageName>a&lt;b&gt;&amp;"c&#10;</imageName></imageFileInfo>

What cannot be set:

  $ netparam set md motion_request.xml width=0
  motion_request.xml:7:16: refused: the number is out of range
      7 |         <width>0</width>
        |                ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  [1]
  $ netparam set md motion_request.xml wdith=1
  netparam: motion_request.xml:3:5: MD has no "wdith"; did you mean width?
  [2]
  $ netparam set md motion_request.xml sensitivityInfoList/sensitivityInfo/id=0
  netparam: motion_request.xml:14:9: MD/sensitivityInfoList has 4 sensitivityInfo: say sensitivityInfo[0] to sensitivityInfo[3]
  [2]
  $ netparam set md motion_request.xml sensitivityInfoList/sensitivityInfo[4]/id=0
  netparam: motion_request.xml:14:9: MD/sensitivityInfoList has only 4 sensitivityInfo
  [2]
  $ netparam set md motion_request.xml scope=1
  netparam: MD/scope has no text but children
  [2]
  $ netparam set md motion_request.xml width=1 width=2
  netparam: a value is set twice
  [2]
  $ netparam set md motion_request.xml
  netparam: nothing is to be set: PATH=VALUE or --grid PATH=FILE
  [2]
  $ netparam set md motion_request.xml width
  netparam: "width" is no PATH=VALUE
  [2]

A grid, drawn into a file, changed there, and put back:

  $ netparam parse md motion_request.xml --grid-out scope=grid.txt --quiet
  motion_request.xml: md accepted
  $ awk '{ print length }' grid.txt | uniq -c
       34 60
  $ netparam set md motion_request.xml --grid grid.txt --diff
  --- motion_request.xml
  +++ motion_request.xml
  $ sed -i '4s/^.../#.#/' grid.txt
  $ cp motion_request.xml request.xml
  $ netparam set md request.xml enable=0 --grid scope=grid.txt --in-place
  $ netparam diff md motion_request.xml request.xml | sed '/+.+/q'
  md: 2 fields differ
    - motion_request.xml
    + request.xml
    enable  1  ->  0
    scope   60 x 34 cells, 432 set  ->  60 x 34 cells, 434 set
        2 cells differ: - set in the first only, + in the second only, ! in both, but differently
        ............................................................
        ............................................................
        ............................................................
        +.+.........................................................

A schedule of several elements is called after the body's, not after the payload's:

  $ netparam parse ptz-cruise ptz_cruises.xml --grid-out keyPos[0]/valueTable=week.txt --quiet
  ptz_cruises.xml: ptz-cruise accepted
  $ netparam set ptz-cruise ptz_cruises.xml --grid keyPos[0]/valueTable=week.txt
  netparam: ptz-cruise has no reply that spells keyPos[0]/valueTable, but the body has cruiseList/cruise[0]/valueTable
  [2]
