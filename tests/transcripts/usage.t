The command line: help, version, what was mistyped, exit codes.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

  $ netparam --version
  netparam 1.0.0
  $ grep -c "VERSION_STRING \"$(netparam --version | cut -d ' ' -f 2)\"" "$TESTDIR/../../netpublic/include/net_version.h"
  1
  $ netparam --help | sed -n '/^Exit codes:/,$p'
  Exit codes:
    0   everything was accepted; diff: the bodies are the same
    1   the library refused a value, an extension header or a payload; diff: the
        bodies differ
    2   usage: there is no such message, option or verb
    3   input or output: a file cannot be read, or the output cannot be written
    4   a text is not well-formed XML or JSON, or not fit to be parsed; diff: or a
        body is refused
    5   unknown: which message a body is cannot be told from its root element and
        its children
    70  a fault of the tool or of the library
  
  Limits:
  A text of XML or JSON has at most 4 MiB, 64 levels of nesting and 64 attributes
  in an element. Of ignored children and of other notes the first 20 of each kind
  are told, and how many there are. In a log, filter hides at most 16 KiB behind a
  tag that is never closed.
  
  "netparam VERB --help" shows a verb's options; man netparam shows everything.
  $ verbs=$(netparam --help | sed -n '/^Verbs:/,/^Exit/ s/^  \([a-z]*\) .*/\1/p')
  $ echo $verbs
  list describe page parse exchange new set write diff check watch filter

Each verb explains itself in lines of a terminal, with examples, and the manual tells of all options and exit codes.

  $ netparam filter --help
  Hides passwords, keys, tokens and addresses in the XML of a log.
  
  Usage: netparam filter [OPTIONS] [FILE...]
  
  Positionals:
    FILE...                     Texts with XML in them; none, or -, is standard
                                input
  
  Options:
    -h, --help                  Print this help and exit
    --also NAME...              A further element or attribute to hide
  
  Copies text to standard output. The content of secret XML elements and
  attributes becomes asterisks, as many as it has bytes; line breaks and
  everything else stay as they are. An element may be spread over lines, and each
  line leaves as soon as it has come. A tag that is never closed, as in a log that
  was cut, hides no more than 16 KiB and the rest of the line. A secret in other
  text is not known.
  
  Examples:
    netparam filter device.log
    tail -f device.log | netparam filter --also deviceName
  
  "netparam --help" explains the exit codes.
  $ for verb in $verbs; do
  >     netparam $verb --help >help || echo "$verb fails"
  >     grep -q '^"netparam --help" explains the exit codes.$' help || echo "$verb does not tell of exit codes"
  >     sed '1,/^Examples:$/d' help | grep -q "netparam $verb\b" || echo "$verb has no example"
  >     grep '.\{81\}' help
  >     netparam manual | grep -q "^.SS netparam $verb$" || echo "$verb is not in the manual"
  >     for option in $(sed '/^Examples:$/,$d' help | grep -o -e '--[a-z-]*'); do
  >         netparam manual | sed 's/\\-/-/g' | grep -q -e "$option" || echo "$option of $verb is not in the manual"
  >     done
  > done
  $ netparam manual | grep '^\\fB[0-9]*\\fR$'
  \fB0\fR
  \fB1\fR
  \fB2\fR
  \fB3\fR
  \fB4\fR
  \fB5\fR
  \fB70\fR
  $ netparam manual | grep -c '4 MiB, 64 levels'
  1

Every name of a message will do.

  $ for name in md MD nets_param_md_init net_md_x2s net_md_s2x net_md net-md; do netparam parse $name motion_request.xml --quiet; done
  motion_request.xml: md accepted
  motion_request.xml: md accepted
  motion_request.xml: md accepted
  motion_request.xml: md accepted
  motion_request.xml: md accepted
  motion_request.xml: md accepted
  motion_request.xml: md accepted

What was mistyped.

  $ netparam
  netparam: VERB is required
  See "netparam --help".
  [2]
  $ netparam prase md motion_request.xml
  netparam: there is no verb "prase"; did you mean parse?
  [2]
  $ netparam parse alram-area motion_request.xml
  netparam: no message is called "alram-area"; did you mean alarm-area, AlarmArea, net_alarm_area?
  [2]
  $ netparam parse mmd motion_request.xml
  netparam: no message is called "mmd"; did you mean md?
  [2]
  $ netparam parse md motion_request.xml --jsn
  netparam parse: The following argument was not expected: --jsn; did you mean --json?
  See "netparam parse --help".
  [2]
  $ netparam parse nets_param_led_state_init motion_request.xml
  netparam: nets_param_led_state_init stands in the catalogue, but the library has neither parser nor writer for it
  [2]
  $ netparam parse
  netparam parse: MESSAGE is required
  See "netparam parse --help".
  [2]
  $ netparam parse md
  netparam: parse md needs a FILE
  [2]
  $ netparam parse md motion_request.xml --channels -1
  netparam parse: --channels: Value -1 not in range 0 to 1024
  See "netparam parse --help".
  [2]
  $ netparam parse md motion_request.xml --format yaml
  netparam parse: --format: yaml not in {text,json,github-actions}
  See "netparam parse --help".
  [2]
  $ netparam parse md - --ext -
  netparam: only one of FILE and --ext can be standard input
  [2]
  $ netparam exchange alarm-area
  netparam: alarm-area is only parsed: it needs a FILE
  [2]

What cannot be read or written.

  $ netparam parse md no-such-file
  netparam: no-such-file: No such file or directory
  [3]
  $ netparam parse md .
  netparam: .: Is a directory
  [3]
  $ netparam exchange md motion_request.xml --ext no-such-file
  netparam: no-such-file: No such file or directory
  [3]
  $ netparam filter no-such-file ntp.xml 2>&1 | head -n 2
  netparam: no-such-file: No such file or directory
  <?xml version="1.0" encoding="UTF-8" ?>
  $ for arguments in --help --version "list --help" manual "check ."; do netparam $arguments >/dev/full; echo $?; done
  netparam: the output cannot be written
  3
  netparam: the output cannot be written
  3
  netparam: the output cannot be written
  3
  netparam: the output cannot be written
  3
  netparam: the output cannot be written
  3

What is not fit to be parsed.

  $ printf '<MD>\n <width>6</widht>\n</MD>\n' | netparam parse md -
  netparam: standard input:2:10: not well-formed XML: Error reading end tag.
      2 |  <width>6</widht>
        |          ^
  [4]
  $ netparam parse md - </dev/null
  netparam: standard input: the text is empty; nothing was parsed
  [4]
  $ netparam parse - </dev/null
  netparam: standard input: the text is empty; nothing was parsed
  [4]
  $ echo ' ' | netparam parse md -
  netparam: standard input: there is nothing but white space; nothing was parsed
  [4]
  $ echo '<!DOCTYPE a [<!ELEMENT a ANY>]>' | netparam parse md -
  netparam: standard input: not well-formed XML: no element is found behind the document type declaration, whose own ones cannot be read
  [4]
  $ echo '<!DOCTYPE a [<!ELEMENT a ANY>]><a/>' | netparam parse md -
  netparam: standard input: not well-formed XML: no element is found behind the document type declaration, whose own ones cannot be read
  [4]
  $ echo '<body/>' | netparam parse md -
  netparam: standard input:1:1: not well-formed XML: the body holds no message
      1 | <body/>
        | ^
  [4]
  $ printf '<a>%.0s' {1..100} | netparam parse md -
  netparam: standard input: nested too deeply; nothing was parsed
  [4]
  $ printf '<a>\xe2' | netparam parse md -
  netparam: standard input: not well-formed XML: Error reading Element value.
  [4]
  $ printf '<MD>\0</MD>' | netparam parse md -
  netparam: standard input:1: a zero byte in the text; nothing was parsed
  [4]
  $ echo "<a $(printf "x%d='1' " {1..100})/>" | netparam parse md -
  netparam: standard input: too many attributes; nothing was parsed
  [4]
  $ (echo '<MD>'; head -c 4M /dev/zero | tr '\0' ' '; echo '</MD>') | netparam parse md -
  netparam: standard input: more than 4194304 bytes; nothing was parsed
  [4]
  $ (ulimit -v 90000; (echo '<MD>'; yes '<b/>' | head -n 800000; echo '</MD>') | tr -d '\n' | netparam parse md -)
  netparam: there is not enough memory
  [70]

A large text is fine.

  $ (echo '<MD>'; yes '<b/>' | head -n 100000; echo '<width>9</width></MD>') | tr -d '\n' | netparam parse md - --only width 2>notes
  md: nets_param_md_init, id 1903, 17056 bytes
    width  9
  $ tail -n 1 notes
  standard input: note: 100000 children are ignored in all
