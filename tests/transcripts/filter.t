Passwords, keys, tokens and addresses of a log become asterisks, as many as they have bytes.

  $ filter() { printf "$@" | netparam filter && echo; }
  $ filter '12:00 <pass>a\xe9</pass> b'
  12:00 <pass>**</pass> b
  $ filter '<key>\n  abc\n</key>'
  <key>
  *****
  </key>
  $ filter "<refreshToken v='1'>x</refreshToken ><ip>1</ip><IP>2</IP>"
  <refreshToken v='1'>*</refreshToken ><ip>*</ip><IP>*</IP>
  $ filter "<a token=\"s->t\" b='c' key = x pwd=''/>"
  <a token="****" b='c' key = * pwd=''/>
  $ filter '<key/>a<encodeType>b</encodeType></key>'
  <key/>a<encodeType>b</encodeType></key>
  $ filter '<key><![CDATA[a</key>]]]>b</key>c'
  <key>*********************</key>c
  $ filter '<key><!--</key>-->b</keys></key>c'
  <key>*********************</key>c
  $ printf '<key>\r\n  abc\n</key>' | netparam filter
  <key>\r (esc)
  *****
  </key> (no-eol)

A secret within one of the same name:

  $ filter "<key>a<key b='>'>c</key>d<key/>e</key>f"
  <key>***************************</key>f
  $ filter '<key>a<keys>b</key>c'
  <key>********</key>c

A log that was cut, or that was none: rather too much is hidden than too little.

  $ filter '<pwd>a\n<pwd>b</pwd> c</pwd> d'
  <pwd>*
  **************</pwd> d
  $ filter 'a < b <3 <x <key>s</key>'
  a < b <3 <x <key>*</key>
  $ filter "<a token='b\n<a token='c d'>e<pwd>f</pwd>"
  <a token='*
  **************>e<pwd>*</pwd>

A tag that is never closed hides 16 KiB and the rest of the line.

  $ (echo 'send <token> now'; yes 'a line of the log' | head -n 2000) | netparam filter | uniq -c
  netparam: standard input: note: 1 open tag has no close tag within 16384 bytes; masking ended with the line
        1 send <token>****
      910 *****************
     1090 a line of the log
  $ (printf '<key>'; yes s | tr -d '\n' | head -c 100000) | netparam filter | tr -d '*'
  <key> (no-eol)

Further names:

  $ echo "<deviceName>abc</deviceName><A DEVICENAME='d'/>" | netparam filter --also devicename
  <deviceName>***</deviceName><A DEVICENAME='*'/>
  $ netparam filter --also </dev/null
  netparam filter: --also: 1 required NAME missing
  See "netparam filter --help".
  [2]
  $ for name in "" "<a" "a b"; do netparam filter --also "$name" </dev/null; done
  netparam filter: --also: "" is no name of an element or attribute
  See "netparam filter --help".
  netparam filter: --also: "<a" is no name of an element or attribute
  See "netparam filter --help".
  netparam filter: --also: "a b" is no name of an element or attribute
  See "netparam filter --help".
  [2]

Files are copied one after the other; what cannot be read is told.

  $ netparam filter no-such-file "$TESTDIR/../../examples/ntp.xml" 2>/dev/null | cmp - "$TESTDIR/../../examples/ntp.xml"
  $ netparam filter no-such-file "$TESTDIR/../../examples/ntp.xml" >/dev/null
  netparam: no-such-file: No such file or directory
  [3]
