Two bodies, compared by what the firmware gets from them.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ sed 's/<endHour>18</<endHour>19</; 0,/<enable>1</s//<enable>0</' motion_request.xml >other.xml
  $ netparam diff md motion_request.xml other.xml
  md: 2 fields differ
    - motion_request.xml
    + other.xml
    enable                                        1  ->  0
    sensitivityInfoList/sensitivityInfo[2]/endHour  18  ->  19
  [1]
  $ netparam diff md motion_request.xml other.xml --json
  {
    "message": "md",
    "a": "motion_request.xml",
    "b": "other.xml",
    "equal": false,
    "differences": [
      {
        "path": "enable",
        "a": 1,
        "b": 0
      },
      {
        "path": "sensitivityInfoList/sensitivityInfo[2]/endHour",
        "a": 18,
        "b": 19
      }
    ]
  }
  [1]
  $ netparam diff md motion_request.xml motion_request.xml
  $ sed s/PAL/NTSC/ video_standard.xml | netparam diff norm video_standard.xml -
  norm: 1 field differs
    - video_standard.xml
    + standard input
    norm  PAL (0)  ->  NTSC (1)
  [1]

Cells are counted, and drawn over each other: the first row loses a cell, the second one gets one.

  $ area() { echo "<A><chn>1</chn><faceArea><width>10</width><height>2</height><area>$1</area></faceArea></A>"; }
  $ netparam diff alarm-area <(area /+AA) <(area f+gA) 2>/dev/null | tail -n +4
    faceArea/area  10 x 2 cells, 11 set  ->  10 x 2 cells, 11 set
        2 cells differ: - set in the first only, + in the second only, ! in both, but differently
        -#########
        #.+.......

Lists of different length:

  $ mask() { echo "<Shelter><id>$1</id><width>5</width></Shelter>"; }
  $ echo "<PicShelter><shelterList>$(mask 0)</shelterList></PicShelter>" >one.xml
  $ echo "<PicShelter><shelterList>$(mask 0)$(mask 1)</shelterList></PicShelter>" >two.xml
  $ netparam diff pic-shelter one.xml two.xml
  pic-shelter: 8 fields differ
    - one.xml
    + two.xml
    shelterList/Shelter[1]/id        (none)  ->  1
    shelterList/Shelter[1]/layer     (none)  ->  0
    shelterList/Shelter[1]/color     (none)  ->  0
    shelterList/Shelter[1]/topLeftX  (none)  ->  0
    shelterList/Shelter[1]/topLeftY  (none)  ->  0
    shelterList/Shelter[1]/width     (none)  ->  5
    shelterList/Shelter[1]/height    (none)  ->  0
    shelterNum                       1  ->  2
  [1]
  $ netparam diff pic-shelter one.xml two.xml --json | jq -c '.differences[]'
  {"path":"shelterList/Shelter[1]/id","a":null,"b":1}
  {"path":"shelterList/Shelter[1]/layer","a":null,"b":0}
  {"path":"shelterList/Shelter[1]/color","a":null,"b":0}
  {"path":"shelterList/Shelter[1]/topLeftX","a":null,"b":0}
  {"path":"shelterList/Shelter[1]/topLeftY","a":null,"b":0}
  {"path":"shelterList/Shelter[1]/width","a":null,"b":5}
  {"path":"shelterList/Shelter[1]/height","a":null,"b":0}
  {"path":"shelterNum","a":1,"b":2}

Nothing is compared when a body cannot be read.

  $ echo '<MD><width>0</width></MD>' | netparam diff md motion_request.xml - >/dev/null
  standard input:1:12: refused: the number is out of range
      1 | <MD><width>0</width></MD>
        |            ^
    element   MD/width
    read      "0"
    accepted  a whole number from 1 to 155
  netparam: standard input is refused, so there is nothing to compare
  [4]
  $ echo '<MD><width>' | netparam diff md motion_request.xml -
  netparam: standard input:2:1: not well-formed XML: Error reading end tag.
      2 | 
        | ^
  [4]
  $ netparam diff md motion_request.xml no-such-file
  netparam: no-such-file: No such file or directory
  [3]
  $ netparam diff md - - </dev/null
  netparam: only one of FILE, OTHER and --ext can be standard input
  [2]
