# bash completion of wlanctl; made by: wlanctl completion bash

# What may follow a verb: verbs, options as NAME or NAME=KIND, and the kinds of its arguments.
_wlanctl_words() {
  verbs='' options='' arguments=''
  case $1 in
    '')
      verbs='show get set edit keys explain ssid diff save revert export import check apply confirm rollback log undo status monitor stations neighbours wps radio led button calibration dump trace unlock doctor completion help'
      options='--help --version'
      ;;
    'show')
      options='--help --secrets --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8'
      ;;
    'get')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='band key...'
      ;;
    'set')
      options='--help --file=file-assignment --from=file --literal --force --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band assignment...'
      ;;
    'edit')
      options='--help --from=file --secrets --force --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'keys')
      options='--help --scope=band,ssid,link --band=band --about=text --json --color=auto,always,never --no-pager'
      arguments='band-or-name'
      ;;
    'explain')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='key'
      ;;
    'ssid')
      verbs='list add remove enable disable rename'
      options='--help'
      ;;
    'ssid list')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'ssid add')
      options='--help --security=open,wpa2-psk,wpa-wpa2-psk,wpa2-wpa3,wpa3 --passphrase-file=file --hide --isolate --to-file --both --dry-run --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band text...'
      ;;
    'ssid remove')
      options='--help --yes --both --dry-run --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8...'
      ;;
    'ssid enable')
      options='--help --both --dry-run --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8...'
      ;;
    'ssid disable')
      options='--help --both --dry-run --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8...'
      ;;
    'ssid rename')
      options='--help --both --dry-run --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8 text...'
      ;;
    'diff')
      options='--help --in-force --exit-code --secrets --json --color=auto,always,never --no-pager'
      arguments='band-or-file...'
      ;;
    'save')
      options='--help --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'revert')
      options='--help --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'export')
      options='--help --format=json,dat --no-secrets --output=file --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'import')
      options='--help --merge --replace --to-file --dry-run --force --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='file band'
      ;;
    'check')
      options='--help --band=2.4g,5g --json --color=auto,always,never --no-pager'
      arguments='file...'
      ;;
    'apply')
      options='--help --dry-run --secrets --confirm=text --keep --again --force --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'confirm')
      options='--help --force --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'rollback')
      options='--help --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'log')
      verbs='show'
      options='--help -n=text --secrets --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'log show')
      options='--help --secrets --json --color=auto,always,never --no-pager'
      arguments='entry'
      ;;
    'undo')
      options='--help --both --dry-run --force --secrets --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band-or-entry...'
      ;;
    'status')
      options='--help --watch --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'monitor')
      options='--help --for=text -n=text --events=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'stations')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8'
      ;;
    'neighbours')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'wps')
      verbs='pbc pin stop status'
      options='--help'
      ;;
    'wps pbc')
      options='--help --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8'
      ;;
    'wps pin')
      options='--help --force --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8 text'
      ;;
    'wps stop')
      options='--help --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8'
      ;;
    'wps status')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='band 1,2,3,4,5,6,7,8'
      ;;
    'radio')
      verbs='on off'
      options='--help'
      ;;
    'radio on')
      options='--help --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'radio off')
      options='--help --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'led')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='text'
      ;;
    'button')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='wlan,wps,wps5g,wlan11ac,wlan-wps'
      ;;
    'calibration')
      verbs='read write'
      options='--help'
      ;;
    'calibration read')
      options='--help --command-timeout=text --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'calibration write')
      options='--help --command-timeout=text --wait=text --yes --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'dump')
      options='--help --secrets --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'trace')
      verbs='on off level'
      options='--help'
      ;;
    'trace on')
      options='--help --json --color=auto,always,never --no-pager'
      ;;
    'trace off')
      options='--help --json --color=auto,always,never --no-pager'
      ;;
    'trace level')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='1,2,3,4,5,6,7,8'
      ;;
    'unlock')
      options='--help --force --wait=text --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'doctor')
      options='--help --all --json --color=auto,always,never --no-pager'
      arguments='band'
      ;;
    'completion')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='bash,zsh'
      ;;
    'help')
      options='--help --json --color=auto,always,never --no-pager'
      arguments='verb verb-below'
      ;;
  esac
}

# Key, scope, bands, and values worth offering.
_wlanctl_keys='
AckPolicy band 2.4g,5g
AMSDU_NUM band 2.4g,5g
APACM band 2.4g,5g
APAifsn band 2.4g,5g
APCwmax band 2.4g,5g
APCwmin band 2.4g,5g
APTxop band 2.4g,5g
AutoChannelSelect band 2.4g,5g 0 1 2 3
AutoChannelSkipList band 2.4g,5g
BasicRate band 2.4g,5g
BeaconPeriod band 2.4g,5g
BGProtection band 2.4g,5g 0 1 2
BSSACM band 2.4g,5g
BSSAifsn band 2.4g,5g
BSSCwmax band 2.4g,5g
BSSCwmin band 2.4g,5g
BssidNum band 2.4g,5g 1 2 3 4 5 6 7 8
BSSTxop band 2.4g,5g
Channel band 2.4g 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14
Channel band 5g 0 36 40 44 48 52 56 60 64 100 104 108 112 116 120 124 128 132 136 140 144 149 153 157 161 165 169 173 177
CountryCode band 2.4g,5g
CountryRegion band 2.4g 0 1 2 3 4 5 6 7 31 32 33
CountryRegionABand band 5g 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14
DfsDedicatedZeroWait band 5g 0 1
DfsZeroWaitDefault band 5g 0 1
Disable160RuMu band 2.4g,5g
DisableOLBC band 2.4g,5g 0 1
DLSCapable band 2.4g,5g 0 1
DscpPriMapEnable band 2.4g,5g
DtimPeriod band 2.4g,5g
EAPifname band 2.4g,5g
EfuseBufferMode band 2.4g,5g 0 1
ETxBfEnCond band 2.4g,5g 0 1
ETxBfIncapable band 2.4g,5g 0 1
FragThreshold band 2.4g,5g
G_BAND_256QAM band 2.4g,5g 0 1
HeraStbcPriority band 2.4g,5g
HT_AMSDU band 2.4g,5g 0 1
HT_AutoBA band 2.4g,5g 0 1
HT_BAWinSize band 2.4g,5g
HT_BSSCoexistence band 2.4g,5g 0 1
HT_BW band 2.4g,5g 0 1
HT_EXTCHA band 2.4g,5g 0 1
HT_GI band 2.4g,5g 0 1
HT_HTC band 2.4g,5g 0 1
HT_LDPC band 2.4g,5g 0 1
HT_LinkAdapt band 2.4g,5g 0 1
HT_MpduDensity band 2.4g,5g 0 1
HT_OpMode band 2.4g,5g 0 1
HT_RDG band 2.4g,5g 0 1
HT_RxStream band 2.4g,5g 0 1 2 3 4
HT_STBC band 2.4g,5g 0 1
HT_TxStream band 2.4g,5g 0 1 2 3 4
IEEE80211H band 2.4g,5g 0 1
ITxBfEn band 2.4g,5g 0 1
MacAddress band 2.4g,5g
MapMode band 2.4g,5g 0 1 2
MaxDLMuMimo band 2.4g,5g
MaxRuOfdma band 2.4g,5g
MaxULMuMimo band 2.4g,5g
MuMimoDlEnable band 2.4g,5g 0 1
MuMimoUlEnable band 2.4g,5g 0 1
MuOfdmaDlEnable band 2.4g,5g 0 1
MuOfdmaUlEnable band 2.4g,5g 0 1
MUTxRxEnable band 2.4g,5g 0 1
NoForwardingBTNBSSID band 2.4g,5g 0 1
own_ip_addr band 2.4g,5g
PERCENTAGEenable band 2.4g,5g 0 1
PktAggregate band 2.4g,5g 0 1
PMKCachePeriod band 2.4g,5g
PPEnable band 2.4g,5g 0 1
PreAuthifname band 2.4g,5g
ProbeHideSSID band 2.4g,5g 0 1
RTSThreshold band 2.4g,5g
session_timeout_interval band 2.4g,5g
SHORTGIFLAG band 2.4g,5g 0 1
ShortSlot band 2.4g,5g 0 1
SREnable band 2.4g,5g 0 1
SRMode band 2.4g,5g 0 1
SRSDEnable band 2.4g,5g 0 1
StaNumDetect band 2.4g,5g
TurboRate band 2.4g,5g
TWTSupport band 2.4g,5g 0 1 2
TxBurst band 2.4g,5g 0 1
TxPower band 2.4g,5g
TxPreamble band 2.4g,5g 0 1
Vht1024QamSupport band 2.4g,5g
VHT_BW band 2.4g,5g 0 1 2 3
VHT_BW_SIGNAL band 2.4g,5g 0 1
VHT_LDPC band 2.4g,5g 0 1
VHT_SGI band 2.4g,5g 0 1
VHT_STBC band 2.4g,5g 0 1
WdsEnable band 2.4g,5g 0 1 2 3 4
WdsEncrypType band 2.4g,5g
WdsList band 2.4g,5g
WdsPhyMode band 2.4g,5g
WHNAT band 2.4g,5g 0 1
WirelessEvent band 2.4g,5g 0 1
WirelessMode band 2.4g 0 1 3 4 5 6 7 8 9 10 16
WirelessMode band 5g 2 3 5 8 10 11 14 15 17
WOEOFF band 2.4g,5g 0 1
AccessControlList ssid 2.4g,5g
AccessPolicy ssid 2.4g,5g 0 1 2
ApCliMacManual ssid 2.4g,5g
ApCliMacManual_Flag ssid 2.4g,5g 0 1
APSDCapable ssid 2.4g,5g 0 1
AuthMode ssid 2.4g,5g OPEN WPAPSK WPA2PSK WPAPSKWPA2PSK WPA3PSK WPA2PSKWPA3PSK WPA WPA2 WPA1WPA2 WPA3 WPA3-192Bit WEP WEPRadius
DefaultKeyID ssid 2.4g,5g 0 1 2 3 4
EnableSSID ssid 2.4g,5g 0 1
EncrypType ssid 2.4g,5g NONE WEP TKIP AES TKIPAES GCMP256
FixedTxMode ssid 2.4g,5g 0 1 2
FtOtd ssid 2.4g,5g 0 1
FtSupport ssid 2.4g,5g 0 1
HideSSID ssid 2.4g,5g 0 1
HT_MCS ssid 2.4g,5g 0 1 2 3 4 5 6 7 8 9 10 11 12 13 14 15 32 33
IEEE8021X ssid 2.4g,5g 0 1
IgmpSnEnable ssid 2.4g,5g 0 1
Key1Str ssid 2.4g,5g -
Key1Type ssid 2.4g,5g 0 1
Key2Str ssid 2.4g,5g -
Key2Type ssid 2.4g,5g 0 1
Key3Str ssid 2.4g,5g -
Key3Type ssid 2.4g,5g 0 1
Key4Str ssid 2.4g,5g -
Key4Type ssid 2.4g,5g 0 1
MaxStaNum ssid 2.4g,5g
MboSupport ssid 2.4g,5g 0 1
MbssMaxStaNum ssid 2.4g,5g
NoForwarding ssid 2.4g,5g 0 1
PMFMFPC ssid 2.4g,5g 0 1
PMFMFPR ssid 2.4g,5g 0 1
PMFSHA256 ssid 2.4g,5g 0 1
PreAuth ssid 2.4g,5g 0 1
RADIUS_Key ssid 2.4g,5g -
RADIUS_Port ssid 2.4g,5g
RADIUS_Server ssid 2.4g,5g
RekeyInterval ssid 2.4g,5g
RekeyMethod ssid 2.4g,5g TIME PKT DISABLE
RRMEnable ssid 2.4g,5g 0 1
SSID ssid 2.4g,5g
TxRate ssid 2.4g,5g
WEPAuthType ssid 2.4g,5g
WmmCapable ssid 2.4g,5g 0 1
WNMEnable ssid 2.4g,5g 0 1
WPAPSK ssid 2.4g,5g -
WSC_UUID_E ssid 2.4g,5g
WSC_UUID_Str ssid 2.4g,5g
WscConfMode ssid 2.4g,5g 0 1 2 3 4 5 6 7
WscConfStatus ssid 2.4g,5g 1 2
WscDefaultSSID ssid 2.4g,5g
WscKeyASCII ssid 2.4g,5g
WscMaxPinAttack ssid 2.4g,5g 0 1 2 3 4 5 6 7 8 9 10
WscSetupLockTime ssid 2.4g,5g
WscV2Support ssid 2.4g,5g 0 1
WdsKey link 2.4g,5g -
'

_wlanctl_add() {
  local word
  for word in "$@"; do
    if [[ $word == "$cur"* ]]; then found+=("$word"); fi
  done
}

# A key with what belongs to it, step by step: KEY or KEY:, KEY:INDEX, KEY:INDEX=VALUE.
_wlanctl_add_keys() {
  local kind=$1 target=${cur%%=*} name scope bands values index
  while read -r name scope bands values; do
    [[ -n $name && $name == "${target%%:*}"* && (-z $band || ,$bands, == *",$band,"*) ]] || continue
    if [[ $scope != band && $target != *:* ]]; then
      _wlanctl_add "$name:"
      continue
    fi
    local -a targets=()
    case $scope in
      band) targets=("$name") ;;
      ssid) for index in 1 2 3 4 5 6 7 8; do targets+=("$name:$index"); done ;;
      link) for index in 1 2 3 4; do targets+=("$name:$index"); done ;;
    esac
    if [[ $kind == key ]]; then
      _wlanctl_add "${targets[@]}"
    elif [[ $cur != *=* ]]; then
      _wlanctl_add "${targets[@]/%/=}"
    elif [[ $kind == assignment && " ${targets[*]} " == *" $target "* ]]; then
      for index in $values; do _wlanctl_add "$target=$index"; done
    fi
  done <<<"$_wlanctl_keys"
}

_wlanctl_add_names() {
  local name rest before=''
  while read -r name rest; do
    if [[ -n $name && $name != "$before" ]]; then _wlanctl_add "$name"; fi
    before=$name
  done <<<"$_wlanctl_keys"
}

_wlanctl_add_files() {
  local head=$1 file
  compopt -o filenames 2>/dev/null
  while IFS= read -r file; do
    if [[ -n $file ]]; then found+=("$head$file"); fi
  done <<<"$(compgen -f -- "${cur#"$head"}")"
}

# The numbers in front of the history's lines.
_wlanctl_add_entries() {
  local line
  while read -r line; do
    if [[ $line == [1-9]* ]]; then _wlanctl_add "${line%% *}"; fi
  done <<<"$("${words[0]}" log 2>/dev/null)"
}

_wlanctl_add_kind() {
  case $1 in
    band) _wlanctl_add 2.4g 5g ;;
    band-or-name) _wlanctl_add 2.4g 5g; _wlanctl_add_names ;;
    band-or-file) _wlanctl_add 2.4g 5g; _wlanctl_add_files '' ;;
    band-or-entry) _wlanctl_add 2.4g 5g; _wlanctl_add_entries ;;
    entry) _wlanctl_add_entries ;;
    verb) _wlanctl_words ''; _wlanctl_add $verbs ;;
    verb-below) _wlanctl_words "$topic"; _wlanctl_add $verbs ;;
    key | assignment) _wlanctl_add_keys "$1" ;;
    file) _wlanctl_add_files '' ;;
    file-assignment) if [[ $cur == *=* ]]; then _wlanctl_add_files "${cur%%=*}="; else _wlanctl_add_keys "$1"; fi ;;
    text | '') ;;
    *) _wlanctl_add ${1//,/ } ;;
  esac
}

# The kind of an option's value; empty for a flag.
_wlanctl_value_kind() {
  local option
  kind=''
  for option in $options; do
    if [[ $option == "$1="* ]]; then kind=${option#*=}; fi
  done
}

# The kind of the argument that comes next.
_wlanctl_argument_kind() {
  local -a kinds
  read -r -a kinds <<<"$arguments"
  kind=${kinds[place]-}
  if [[ -z $kind && ${#kinds[@]} -gt 0 && ${kinds[${#kinds[@]} - 1]} == *... ]]; then
    kind=${kinds[${#kinds[@]} - 1]}
  fi
  kind=${kind%...}
}

# The words up to the cursor: bash takes them apart at : and =, here they are whole.
_wlanctl_split() {
  local rest=${COMP_LINE:0:COMP_POINT} part i
  words=()
  for ((i = 0; i <= COMP_CWORD; i++)); do
    part=${COMP_WORDS[i]}
    if [[ $i == 0 || $rest == [[:blank:]]* ]]; then
      rest=${rest#"${rest%%[![:blank:]]*}"}
      words+=('')
    fi
    if [[ $i == "$COMP_CWORD" ]]; then part=$rest; fi
    rest=${rest#"$part"}
    words[${#words[@]} - 1]+=$part
  done
}

_wlanctl() {
  local IFS=$' \t\n' verbs options arguments word cur stem='' path='' band='' topic='' kind='' place=0 is_value=''
  local -a words found=()
  _wlanctl_split
  cur=${words[${#words[@]} - 1]}
  _wlanctl_words ''
  for word in "${words[@]:1:${#words[@]} - 2}"; do
    if [[ -n $is_value ]]; then
      is_value=''
    elif [[ $word == -* ]]; then
      _wlanctl_value_kind "$word"
      is_value=$kind
      # It stands for the band.
      if [[ $word == --both && $place == 0 ]]; then
        if [[ $arguments == 'band '* ]]; then place=1; else arguments=''; fi
      fi
    elif [[ -n $verbs && ( -z $arguments || " $verbs " == *" $word "* ) ]]; then
      path="${path:+$path }$word"
      _wlanctl_words "$path"
    else
      _wlanctl_argument_kind
      if [[ $kind == band ]]; then band=${word,,}; fi
      if [[ $kind == verb ]]; then topic=$word; fi
      verbs=''
      ((++place))
    fi
  done

  if [[ -n $is_value ]]; then
    _wlanctl_add_kind "$is_value"
  elif [[ $cur == --*=* ]]; then
    _wlanctl_value_kind "${cur%%=*}"
    stem=${cur%%=*}= cur=${cur#*=}
    _wlanctl_add_kind "$kind"
    cur=$stem$cur
  elif [[ $cur == -* ]]; then
    for word in $options; do _wlanctl_add "${word%%=*}"; done
  else
    _wlanctl_add $verbs
    _wlanctl_argument_kind
    _wlanctl_add_kind "$kind"
  fi

  # Bash replaces only what stands behind the last : or = where it takes words apart there.
  local head=''
  if [[ $COMP_WORDBREAKS == *:* && $cur == *:* ]]; then head=${cur%"${cur##*:}"}; fi
  if [[ $COMP_WORDBREAKS == *=* && $cur == *=* ]]; then head=${cur%"${cur##*=}"}; fi
  COMPREPLY=()
  for word in "${found[@]}"; do
    word=$stem$word
    if [[ $word == *[:=] ]]; then compopt -o nospace 2>/dev/null; fi
    COMPREPLY+=("${word#"$head"}")
  done
}

complete -F _wlanctl wlanctl
