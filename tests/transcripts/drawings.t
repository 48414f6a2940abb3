Areas, lines and masks are drawn, on the terminal and as pictures.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

Areas are closed, and lines are not.

  $ point() { echo "<point><x>$1</x><y>$2</y></point>"; }
  $ points=$(point 0 0; point 1 0; point 1 1; point 0 1)
  $ area() {
  >     echo "<IntrusionDetect><op>modify</op><intrusionDetectItem><index>0</index><pointList>$1</pointList></intrusionDetectItem></IntrusionDetect>" |
  >         netparam parse intrusion-detect - --only intrusionDetectItem[0]/pointList |
  >         sed -n '/pointList$/,$p'
  > }
  $ area "$points"
    intrusionDetectItem[0]/pointList
        +------------------------------------------------+
        |1**********************************************2|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |*                                              *|
        |4**********************************************3|
        +------------------------------------------------+
  $ echo "<CrosslineDetect><op>modify</op><crosslineDetectItem><index>0</index><pointList>$points</pointList></crosslineDetectItem></CrosslineDetect>" |
  >     netparam parse crossline-detect - --only crosslineDetectItem[0]/pointList | sed -n '/pointList$/,$p'
    crosslineDetectItem[0]/pointList
        +------------------------------------------------+
        |1**********************************************2|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |                                               *|
        |4**********************************************3|
        +------------------------------------------------+

Points outside the picture are not drawn.

  $ area "$(point 0 0; point 2 0; point 1 1)"
    intrusionDetectItem[0]/pointList
        not drawn: a point lies outside the picture, which reaches from 0 to 1

Masks are scaled to their extent.

  $ mask() { echo "<Shelter><id>$1</id><topLeftX>$2</topLeftX><topLeftY>$3</topLeftY><width>$4</width><height>$5</height></Shelter>"; }
  $ echo "<PicShelter><shelterList>$(mask 5 0 0 50 100; mask 2 150 150 50 50)</shelterList></PicShelter>" |
  >     netparam parse pic-shelter - | sed -n '/+--/,$p'
        +------------------------------------------------+
        |555555555555                                    |
        |555555555555                                    |
        |555555555555                                    |
        |555555555555                                    |
        |555555555555                                    |
        |555555555555                                    |
        |555555555555                                    |
        |555555555555                                    |
        |                                                |
        |                                                |
        |                                                |
        |                                                |
        |                                    222222222222|
        |                                    222222222222|
        |                                    222222222222|
        |                                    222222222222|
        +------------------------------------------------+
        scaled to the largest extent, 200 x 200
    shelterNum                       2

The same as pictures, with titles, axes and legends:

  $ texts() { grep -o '<text[^>]*>[^<]*' $1 | sed 's/.*>//'; }
  $ for verb in parse exchange; do netparam $verb md motion_request.xml --svg $verb.svg >/dev/null; done
  $ cmp parse.svg exchange.svg
  $ texts parse.svg | paste -s -d '|'
  md: nets_param_md_init, id 1903, 17056 bytes|timeBlockList/timeBlock|56 of 168 hours|day \ hour|0|3|6|9|12|15|18|21|24|Sunday|Monday|Tuesday|Wednesday|Thursday|Friday|Saturday|set|not set|scope|60 x 34 cells, 432 set|row \ column|0|10|20|30|40|50|0|10|20|30|set|not set

A row of cells is drawn in pieces, whose widths add up to the 432 cells of 14 units.

  $ grep -o '<rect[^>]*height="14"[^>]*fill="#3b7dc4"' parse.svg | sed 's/.*width="\([0-9.]*\)".*/\1/' | awk '{ sum += $1 } END { print sum / 14 }'
  432

Schedules, months, lines, areas and masks:

  $ netparam parse record-schedule record_schedule_combinations.xml --svg week.svg >/dev/null
  $ texts week.svg | grep Normal
  c Normal
  $ netparam parse day-record day_records.xml --svg month.svg >/dev/null 2>&1
  $ texts month.svg | grep all
  A all
  $ netparam parse crossline-detect crossline_rules.xml --svg lines.svg >/dev/null
  $ grep -o '<polyline points="[^"]*"' lines.svg
  <polyline points="146,219 506,219 "
  <polyline points="206,495.5 326,529.25 446,495.5 "
  <polyline points="86,1008.25 146,991.375 206,974.5 266,957.625 326,957.625 386,974.5 476,991.375 566,1008.25 "
  $ netparam parse intrusion-detect intrusion_rules.xml --svg areas.svg >/dev/null
  $ grep -o '<polygon points="[^"]*"' areas.svg
  <polygon points="146,117.75 506,117.75 506,286.5 146,286.5 "
  $ netparam parse pic-shelter privacy_masks.xml --svg masks.svg >/dev/null
  $ texts masks.svg
  pic-shelter: nets_param_pic_shelter_init, id 1906, 244 bytes
  shelterList/Shelter
  0
  x
  1700
  0
  y
  1000
  0
  3
  each mask bears the last digit of its id; the frame is the largest extent

Nothing to draw:

  $ netparam parse ntp ntp.xml --svg none.svg >/dev/null
  netparam: none.svg: not written, since there is nothing to draw
  [3]
  $ test -e none.svg
  [1]
  $ netparam parse md motion_request.xml --svg no/folder >/dev/null
  netparam: no/folder: No such file or directory
  [3]
