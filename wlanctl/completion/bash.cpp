// Completion for bash, without the help of other completion packages: a gateway has none.
#include "wlanctl/base/text.h"
#include "wlanctl/completion/completion.h"

namespace wlanctl {
namespace {

constexpr char kHead[] = R"bash(# bash completion of wlanctl; made by: wlanctl completion bash

# What may follow a verb: verbs, options as NAME or NAME=KIND, and the kinds of its arguments.
_wlanctl_words() {
  verbs='' options='' arguments=''
  case $1 in
)bash";

constexpr char kKeys[] = R"bash(  esac
}

# Key, scope, bands, and values worth offering.
_wlanctl_keys='
)bash";

constexpr char kEngine[] = R"bash('

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
)bash";

std::string words_line(const VerbWords& verb) {
  std::vector<std::string> verbs, options;
  for (const VerbWords& below : verb.verbs) verbs.push_back(below.name);
  for (const OptionWords& option : verb.options) {
    options.push_back(option.name + (option.value.empty() ? "" : "=" + option.value));
  }
  std::string line = "    " + shell_quoted(verb.path) + ")\n";
  if (!verbs.empty()) line += "      verbs=" + shell_quoted(joined(verbs, " ")) + "\n";
  line += "      options=" + shell_quoted(joined(options, " ")) + "\n";
  if (!verb.arguments.empty()) line += "      arguments=" + shell_quoted(joined(verb.arguments, " ")) + "\n";
  return line + "      ;;\n";
}

void add_words(const VerbWords& verb, std::string* text) {
  *text += words_line(verb);
  for (const VerbWords& below : verb.verbs) add_words(below, text);
}

}  // namespace

std::string bash_completion(const VerbWords& program) {
  std::string text = kHead;
  add_words(program, &text);
  text += kKeys;
  for (const Key& key : all_keys()) {
    for (const Offer& offer : offers_of(key)) {
      text += std::string(key.name) + " " + word_for(key.scope) + " " + offer.bands;
      for (const std::string& value : offer.values) text += " " + value;
      text += '\n';
    }
  }
  return text + kEngine;
}

}  // namespace wlanctl
