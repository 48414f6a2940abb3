A body to start from.

  $ netparam new norm
  <?xml version="1.0" encoding="UTF-8" ?>
  <!-- norm: video standard. PAL or NTSC. -->
  <body>
      <Norm version="1.1">
          <norm>PAL<!-- required: one of these words: PAL, NTSC --></norm>
      </Norm>
  </body>
  $ netparam new norm --bare
  <?xml version="1.0" encoding="UTF-8" ?>
  <body>
      <Norm version="1.1">
          <norm>PAL</norm>
      </Norm>
  </body>
  $ netparam new ntp --minimal
  <?xml version="1.0" encoding="UTF-8" ?>
  <!-- ntp: NTP. From which server the device takes the time, and how often. -->
  <body>
      <Ntp version="1.1"></Ntp>
  </body>

Comments tell what is accepted, and what is required.

  $ netparam new md | grep -e '<!-- md: ' -e 'sensitivityInfo: a list' -e '<width>' -e '<columns>'
  <!-- md: motion detection settings. Where, when and how sensitively a channel watches for motion, and what it does about it.
       sensitivityInfoList/sensitivityInfo: a list of exactly 4
          <width>1<!-- a whole number from 1 to 155 --></width>
              <columns>6<!-- required: a whole number from 1 to 155: those of the table --></columns>
