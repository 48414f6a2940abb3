Completions of the shells.

  $ cd "$TESTDIR/../../examples"

  $ complete() {
  >     bash -c "$(netparam completion bash)"'
  >         COMP_WORDS=("$@"); COMP_CWORD=$(($# - 1)); _netparam "$1"; echo "${COMPREPLY[*]}"' bash netparam "$@"
  > }
  $ complete pa
  page parse
  $ complete --v
  --version
  $ complete parse cover
  cover-preview
  $ complete parse --form
  --format
  $ complete parse --format j
  json
  $ complete parse --format = j
  json
  $ complete parse md motion_r
  motion_request.xml
  $ complete parse --ext x md motion_r
  motion_request.xml
  $ complete parse md --ext motion_e
  motion_extension.xml
  $ complete parse --channels ""
  
  $ complete parse --type HO
  HOMEHUB
  $ complete check a ntp.x
  ntp.xml
  $ complete check --message cover
  cover-preview
  $ complete nosuch ""
  
  $ complete exchange "" | tr ' ' '\n' | diff - <(netparam list --names)

  $ ! command -v zsh >/dev/null || netparam completion zsh | zsh -n
