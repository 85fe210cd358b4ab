// Completion for zsh, with the meaning of each word beside it.
#include "wlanctl/base/text.h"
#include "wlanctl/completion/completion.h"

namespace wlanctl {
namespace {

constexpr char kHead[] = R"zsh(#compdef wlanctl
# zsh completion of wlanctl; made by: wlanctl completion zsh

# What may follow a verb: verbs and options with their meanings, kinds of the options' values and of the arguments.
_wlanctl_words() {
  verbs=() options=() arguments=() takes=()
  case $1 in
)zsh";

constexpr char kKeys[] = R"zsh(  esac
}

# Key, scope, bands, values worth offering joined by commas, and the meaning.
_wlanctl_table=(
)zsh";

constexpr char kEngine[] = R"zsh()

# A key with what belongs to it, step by step: KEY or KEY:, KEY:INDEX, KEY:INDEX=VALUE.
_wlanctl_keys() {
  local kind=$1 target=${cur%%=*} row rest name scope bands values meaning index
  local -a targets found shown
  for row in $_wlanctl_table; do
    read -r name scope bands values meaning <<<$row
    [[ $name == ${target%%:*}* && ( -z $band || ,$bands, == *,$band,* ) ]] || continue
    if [[ $scope != band && $target != *:* ]]; then
      found+=("$name:") shown+=("$name  -- $meaning")
      continue
    fi
    case $scope in
      band) targets=($name) ;;
      ssid) targets=($name:{1..8}) ;;
      link) targets=($name:{1..4}) ;;
    esac
    if [[ $kind == key ]]; then
      for index in $targets; do found+=($index) shown+=("$index  -- $meaning"); done
    elif [[ $cur != *=* ]]; then
      for index in $targets; do found+=("$index=") shown+=("$index  -- $meaning"); done
    elif [[ $kind == assignment && $values != none ]] && (( ${targets[(Ie)$target]} )); then
      for index in ${(s:,:)values}; do found+=("$target=$index") shown+=($index); done
    fi
  done
  if [[ $kind == key ]] && (( ! ${found[(I)*:]} )); then
    compadd -l -d shown -p "$stem" -- $found
  elif [[ $cur == *=* ]]; then
    compadd -d shown -- $found
  else
    compadd -l -S '' -d shown -- $found
  fi
}

_wlanctl_names() {
  local row name scope bands values meaning
  local -a found shown
  for row in $_wlanctl_table; do
    read -r name scope bands values meaning <<<$row
    if [[ $name != ${found[-1]-} ]]; then found+=($name) shown+=("$name  -- $meaning"); fi
  done
  compadd -l -d shown -- $found
}

# The numbers in front of the history's lines, each with its line.
_wlanctl_entries() {
  local -a lines
  lines=(${(M)${(f)"$($words[1] log 2>/dev/null)"}:#[1-9]*})
  compadd -l -d lines -- ${lines%% *}
}

_wlanctl_offer() {
  case $1 in
    band) compadd -- 2.4g 5g ;;
    band-or-name) compadd -- 2.4g 5g; _wlanctl_names ;;
    band-or-file) compadd -- 2.4g 5g; _files ;;
    band-or-entry) compadd -- 2.4g 5g; _wlanctl_entries ;;
    entry) _wlanctl_entries ;;
    verb) _wlanctl_words ''; _describe verb verbs ;;
    verb-below) _wlanctl_words $topic; _describe verb verbs ;;
    key | assignment) _wlanctl_keys $1 ;;
    file) _files ;;
    file-assignment) if compset -P '*='; then _files; else _wlanctl_keys $1; fi ;;
    text | '') _message 'a value' ;;
    *) compadd -- ${(s:,:)1} ;;
  esac
}

# The kind of the argument that comes next.
_wlanctl_argument_kind() {
  kind=${arguments[place]-}
  if [[ -z $kind && ${arguments[-1]-} == *... ]]; then kind=${arguments[-1]}; fi
  kind=${kind%...}
}

_wlanctl() {
  emulate -L zsh
  setopt extended_glob
  local word cur=$words[CURRENT] path='' band='' topic='' kind='' is_value='' stem=''
  local -i place=1
  local -a verbs options arguments
  local -A takes
  _wlanctl_words ''
  for word in ${words[2,CURRENT-1]}; do
    if [[ -n $is_value ]]; then
      is_value=''
    elif [[ $word == -* ]]; then
      is_value=${takes[$word]-}
      # It stands for the band.
      if [[ $word == --both && $place == 1 ]]; then
        if [[ ${arguments[1]-} == band ]]; then place=2; else arguments=(); fi
      fi
    elif (( $#verbs && ( ! $#arguments || ${#${(M)verbs:#$word:*}} ) )); then
      path="${path:+$path }$word"
      _wlanctl_words $path
    else
      _wlanctl_argument_kind
      if [[ $kind == band ]]; then band=${(L)word}; fi
      if [[ $kind == verb ]]; then topic=$word; fi
      verbs=()
      (( ++place ))
    fi
  done

  if [[ -n $is_value ]]; then
    _wlanctl_offer $is_value
  elif [[ $cur == --*=* ]]; then
    kind=${takes[${cur%%=*}]-}
    compset -P '*='
    cur=${cur#*=}
    _wlanctl_offer $kind
  elif [[ $cur == -* ]]; then
    _describe -o option options
  else
    if (( $#verbs )); then _describe verb verbs; fi
    if (( ! $#verbs || $#arguments )); then
      _wlanctl_argument_kind
      _wlanctl_offer $kind
    fi
  fi
}

_wlanctl "$@"
)zsh";

// "name:meaning" as _describe reads it.
std::string described(const std::string& name, const std::string& meaning) {
  return shell_quoted(name + ":" + meaning);
}

void add_words(const VerbWords& verb, std::string* text) {
  const auto add = [&](const char* name, const std::string& items) {
    if (!items.empty()) *text += std::string("      ") + name + "=(" + items + ")\n";
  };
  std::string verbs, options, arguments, takes;
  for (const VerbWords& below : verb.verbs) verbs += "\n        " + described(below.name, below.description);
  for (const OptionWords& option : verb.options) {
    options += "\n        " + described(option.name, option.description);
    if (!option.value.empty()) takes += (takes.empty() ? "" : " ") + option.name + " " + shell_quoted(option.value);
  }
  for (const WordKind& kind : verb.arguments) arguments += (arguments.empty() ? "" : " ") + shell_quoted(kind);
  *text += "    " + shell_quoted(verb.path) + ")\n";
  add("verbs", verbs);
  add("options", options);
  add("takes", takes);
  add("arguments", arguments);
  *text += "      ;;\n";
  for (const VerbWords& below : verb.verbs) add_words(below, text);
}

std::string row_of(const Key& key, const Offer& offer) {
  return std::string(key.name) + " " + word_for(key.scope) + " " + offer.bands + " " +
         (offer.values.empty() ? "none" : joined(offer.values, ",")) + " " + key.meaning;
}

}  // namespace

std::string zsh_completion(const VerbWords& program) {
  std::string text = kHead;
  add_words(program, &text);
  text += kKeys;
  for (const Key& key : all_keys()) {
    for (const Offer& offer : offers_of(key)) text += "  " + shell_quoted(row_of(key, offer)) + "\n";
  }
  return text + kEngine;
}

}  // namespace wlanctl
