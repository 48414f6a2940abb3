The catalogue of messages.

  $ netparam list nets_param_md_init
  NAME    ID   SIZE  DIRECTIONS   TITLE                      INITIALISER
  md    1903  17056  parse write  motion detection settings  nets_param_md_init

By id, and by names of functions, structures and keys, whatever their case:

  $ netparam list 1903 --names
  md
  $ netparam list NETS_PARAM_LED --json | jq -c '.[] | [.initialiser, .id, .parser, .writer]'
  ["nets_param_led_state_init",203,null,null]
  $ netparam list motion --names | head -n 1
  md
  $ netparam list tag_net_pic_motion_cfg_v20_t --names
  md
  $ netparam list fBacklash --names
  backlash
  support
  $ netparam list "pan and tilt stand" --names
  ptz-position
  $ netparam list HddInitList --names | grep hdd
  hdd-init
  $ netparam list nosuchthing
  netparam: nothing in the catalogue matches "nosuchthing"
  [2]
  $ netparam list motoin
  netparam: nothing in the catalogue matches "motoin"
  [2]
  $ netparam list nets_param_md_inti
  netparam: nothing in the catalogue matches "nets_param_md_inti"; did you mean nets_param_md_init?
  [2]

Initialisers without parser and writer: of shared ids, one that does nothing, one that stamps the envelope only.

  $ netparam list --json | jq -c '.[] | select(.initialiser // "" | test("isp_base_init|param_large_battery_init|nets_param_file_info_init")) |
  > [.initialiser, .id, .size, .parser]'
  ["net_param_isp_base_init",201,36,null]
  ["nets_param_isp_base_init",201,36,null]
  ["nets_param_file_info_init",1401,0,null]
  ["net_param_large_battery_init",null,0,null]

A reader may have seen enough.

  $ (trap "" PIPE; netparam list | head -n 1)
  NAME                        ID    SIZE  DIRECTIONS   TITLE                                INITIALISER

  $ netparam list >/dev/full
  netparam: the output cannot be written
  [3]
