Drawings that are read back: grids and schedules, as "parse" draws them.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ netparam write md motion_payload.json --grid motion_grid.txt | cmp - <(netparam write md motion_payload.json)
  $ cat record_week.txt
             0     6     12    18
  Sunday     aaaaaabcccccccccccccddee
  Monday     ffffffghiiiiiiiiiijjkkll
  Tuesday    ffffffghiiiiiiiiiijjkkll
  Wednesday  ffffffghiiiiiiiiiijjkkll
  Thursday   ffffffghiiiiiiiiiijjkkll
  Friday     ffffffghiiiiiiiiiijjkkll
  Saturday   aaaaaabcccccccccccccddee
  a = MD,IO,people,crossline_0,crossline_2
  b = MD,people,crossline_0,crossline_2
  c = MD,people,crossline_0
  d = MD,people,vehicle,crossline_0
  e = MD,IO,people,vehicle,crossline_0
  f = MD,IO,crossline_2
  g = MD,crossline_2
  h = MD
  i = MD,Normal
  j = MD,people
  k = MD,people,vehicle
  l = MD,IO,people,vehicle
  $ netparam write record-schedule record_schedule_payload.json --grid record_week.txt >body.xml
  record_schedule_payload.json:5:23: note: typeScheduleList (MD,IO,Normal,people,vehicle,crossline_0,crossline_2) comes back as MD
  $ netparam write record-schedule record_schedule_payload.json | cmp - body.xml
  - body.xml differ: char 121, line 6
  [1]

What does not fit a grid of 60 x 34 cells:

  $ row=$(printf '.%.0s' {1..60})
  $ for i in {1..34}; do echo $row; done >grid.txt
  $ drawn() { netparam write $1 $2_payload.json --grid -; }
  $ (echo '  #x'; cat grid.txt) | drawn md motion
  netparam: standard input:1:4: the drawing does not fit: "x" stands for nothing; known: # .
  [4]
  $ printf "\n$row.\n" | drawn md motion
  netparam: standard input:2:61: the drawing does not fit: 61 cells here, 60 cells wanted
  [4]
  $ echo '  ..' | drawn md motion
  netparam: standard input:1:5: the drawing does not fit: 2 cells here, 60 cells wanted
  [4]
  $ head -n 33 grid.txt | drawn md motion
  netparam: standard input:34:1: the drawing does not fit: 33 rows here, 34 wanted
  [4]
  $ (cat grid.txt; echo $row) | drawn md motion
  netparam: standard input:35:1: the drawing does not fit: the grid has only 34 rows
  [4]
  $ netparam write md motion_payload.json --grid scop=grid.txt
  netparam: no grid or schedule is called "scop"; did you mean scope?
  [2]

What is no week:

  $ for day in Sunday Monday Tuesday Wednesday Thursday Friday Saturday; do printf '%-11s########################\n' $day; done >week.txt
  $ sed 's/Friday/Sunday/' week.txt | drawn md motion
  netparam: standard input:6:1: the drawing does not fit: the day is drawn twice
  [4]
  $ sed 's/Friday/Fryday/' week.txt | drawn md motion
  netparam: standard input:6:1: the drawing does not fit: this is no day of the week
  [4]
  $ sed 's/Monday     #/Monday     +/' week.txt | drawn md motion
  netparam: standard input:2:12: the drawing does not fit: "+" stands for nothing; known: # . 2 3 4 5 6 7 8 9
  [4]
  $ head -n 6 week.txt | drawn md motion
  netparam: standard input:7:1: the drawing does not fit: Saturday is missing
  [4]
  $ drawn record-schedule record_schedule <week.txt
  netparam: standard input:1:12: the drawing does not fit: "#" stands for nothing; known: .
  [4]
  $ (tr '#' a <week.txt; echo '  a = MD, poeple') | drawn record-schedule record_schedule
  netparam: standard input:8:11: the drawing does not fit: "poeple" is no alarm type
  [4]

Payloads without a grid, and with several:

  $ drawn record-schedule record_schedule <grid.txt
  netparam: the payload has no grid that can be drawn
  [2]
  $ drawn ai-cfg ai_settings <grid.txt
  netparam: the payload has no grid and no schedule
  [2]
  $ echo '{"mdArea": {"width": 2, "height": 1, "area": ["00"]}, "faceArea": {"width": 2, "height": 1, "area": ["00"]}}' >payload.json
  $ echo '#.' | netparam write alarm-area payload.json --raw drawn --grid -
  netparam: the drawing may replace any of these, so say which one, with --grid PATH=FILE: mdArea/area, personArea/area, vehicleArea/area, faceArea/area, dogCatArea/area, otherArea/area, packageArea/area
  [2]
  $ echo '#.' | netparam write alarm-area payload.json --raw drawn --grid faceArea/area=-
  $ netparam write alarm-area payload.json --raw blank
  $ cmp -l drawn blank | wc -l
  1
