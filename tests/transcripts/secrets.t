Passwords, keys and tokens are hidden wherever they could show.

  $ cp -r "$TESTDIR/../../examples" . && cd examples

In headers:

  $ echo '<Extension><pass>hunter2</pass><token>t0ps3cret</token><patrolId>9</patrolId></Extension>' >extension.xml
  $ for verb in parse exchange "parse --json"; do netparam $verb md motion_request.xml --ext extension.xml 2>&1 | grep -e hunter2 -e t0ps3cret; done
  [1]
  $ netparam exchange md motion_request.xml --ext extension.xml 2>/dev/null | sed -n '/^Request, extension/,/^Extension/p'
  Request, extension header
    <Extension>
      <pass>*******</pass>
      <token>*********</token>
      <patrolId>9</patrolId>
    </Extension>
  $ netparam parse md motion_request.xml --ext extension.xml --show-secrets 2>&1 | grep t0ps3cret
      1 | ...pass><token>t0ps3cret</token><patrolId>9</patrolId></Extension>

In payloads:

  $ echo '<RecordKey><key>front-door</key></RecordKey>' >key.xml
  $ netparam parse record-decrypt-key key.xml
  record-decrypt-key: prepared by the host, 324 bytes
    key       ********
    fileName  ""
    type      0
  $ netparam parse record-decrypt-key key.xml --json | jq -c .payload
  {"key":"********","fileName":"","type":0}
  $ netparam parse record-decrypt-key key.xml --show-secrets
  record-decrypt-key: prepared by the host, 324 bytes
    key       "front-door"
    fileName  ""
    type      0

In what is malformed or refused:

  $ echo '<MD><key>front-door</kex>' | netparam parse md -
  netparam: standard input:1:20: not well-formed XML: Error reading end tag.
      1 | <MD><key>****************
        |                    ^
  [4]
  $ echo "<RecordKey><k>$(printf 's%.0s' {1..600})</k></RecordKey>" | netparam parse record-decrypt-key -
  record-decrypt-key: prepared by the host, 324 bytes, as far as it was read
    key       ********
    fileName  ""
    type      0
  standard input:1:12: note: RecordKey/k was read as key
  standard input:1:15: refused: the text is too long: 600 characters
      1 | <RecordKey>*******************************************************...
        |               ^
    element   RecordKey/k  (key key)
    read      ********
    accepted  a text of at most 63 characters
  [1]

A hidden secret cannot be written back.

  $ netparam parse record-decrypt-key key.xml --json | netparam write record-decrypt-key - --raw bytes
  standard input:12:12: refused: the secret itself is not there
    member    key
    read      "********"
    accepted  its text, which "netparam parse --json --show-secrets" prints
  [1]
  $ netparam parse record-decrypt-key key.xml --json --show-secrets | netparam write record-decrypt-key - --raw bytes
  $ grep -c front-door bytes
  1

They differ unseen.

  $ echo '<RecordKey><key>back-door</key></RecordKey>' | netparam diff record-decrypt-key key.xml -
  record-decrypt-key: 1 field differs
    - key.xml
    + standard input
    key  ********  (differ)
  [1]
  $ echo '<RecordKey><key>back-door</key></RecordKey>' | netparam diff record-decrypt-key key.xml - --json
  {
    "message": "record-decrypt-key",
    "a": "key.xml",
    "b": "standard input",
    "equal": false,
    "differences": [
      {
        "path": "key",
        "a": "********",
        "b": "********"
      }
    ]
  }
  [1]
