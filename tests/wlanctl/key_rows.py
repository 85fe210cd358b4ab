#!/usr/bin/env python3
"""Holds wlanctl's table of settings against the library's own tables and its header.

  key_rows.py SOURCE_FOLDER     prints every difference; exit code 1 when there is one
"""
import pathlib
import re
import sys

# What a predicate of the library takes, in the tool's words.
PREDICATES = {
    "MacCheck": "nothing()",
    "IPV4check": 'rule("an IPv4 address")',
    "is_stream_count": "number(0, 4)",
    "is_session_timeout": "number(0, kNoUpperLimit)",
    "is_binary_digit": "number(0, 1)",
    "is_radius_secret": 'rule("8 to 63 characters, or 64 hexadecimal digits")',
    "is_key_format": 'rule("0, 1, 8 to 63")',
    "is_not_negative": "digits()",
}
WORD_LISTS = {"is_cipher": "kCiphers", "is_rekey_method": "kMethods"}

# Settings with rules of their own, outside the tables: dat key, scope, numbering, bands, what is accepted.
OWN_RULES = {
    "wifimgr_lib_set_bssidNum": ("BssidNum", "kBand", "kShared", "kOnBoth", "any_text()"),
    "wifimgr_lib_set_countryRegion": ("CountryRegion", "kBand", "kShared", "kOn2_4G", 'rule("0 to 7, 31, 32, 33")'),
    "wifimgr_lib_set_countryRegionABand": ("CountryRegionABand", "kBand", "kShared", "kOn5G", "number(0, 14)"),
    "wifimgr_lib_set_wirelessMode": (
        "WirelessMode", "kBand", "kShared", "kOnBoth",
        'rule("2.4g 0, 1, 3 to 10, 16; 5g 2, 3, 5, 8, 10, 11, 14, 15, 17")'),
    "wifimgr_lib_set_HT_BW": ("HT_BW", "kBand", "kShared", "kOnBoth", "number(0, 1)"),
    "wifimgr_lib_set_HT_GI": ("HT_GI", "kBand", "kShared", "kOnBoth", "number(0, 1)"),
    "wifimgr_lib_set_HT_MCS": ("HT_MCS", "kSsid", "kShared", "kOnBoth", 'rule("0 to 15, 32, 33")'),
    "wifimgr_lib_set_VHT_BW": ("VHT_BW", "kBand", "kShared", "kOnBoth", "number(0, 3)"),
    "wifimgr_lib_set_VHT_SGI": ("VHT_SGI", "kBand", "kShared", "kOnBoth", "number(0, 1)"),
    "wifimgr_lib_set_DfsDedicatedZeroWait": ("DfsDedicatedZeroWait", "kBand", "kShared", "kOn5G", "number(0, 1)"),
    "wifimgr_lib_set_DfsZeroWaitDefault": ("DfsZeroWaitDefault", "kBand", "kShared", "kOn5G", "number(0, 1)"),
    "wifimgr_lib_set_MapMode": ("MapMode", "kBand", "kShared", "kOnBoth", "number(0, 2)"),
    "wifimgr_lib_set_MboSupport": ("MboSupport%d", "kSsid", "kFromOne", "kOnBoth", "number(0, 1)"),
    "wifimgr_lib_set_WscUUIDE": ("WSC_UUID_E%d", "kSsid", "kFromOne", "kOnBoth", "any_text()"),
    "wifimgr_lib_set_WscUUIDStr": ("WSC_UUID_Str%d", "kSsid", "kFromOne", "kOnBoth", "any_text()"),
    "wifimgr_lib_set_wdsenable": ("WdsEnable", "kBand", "kShared", "kOnBoth", "number(0, 4)"),
    "wifimgr_lib_set_wdslist": ("WdsList", "kBand", "kShared", "kOnBoth", 'rule("four MAC addresses joined by ;")'),
    "wifimgr_lib_set_wdsencryptype": (
        "WdsEncrypType", "kBand", "kShared", "kOnBoth", 'rule("four of NONE, WEP, TKIP, AES joined by ;")'),
    "wifimgr_lib_set_wdsphymode": (
        "WdsPhyMode", "kBand", "kShared", "kOnBoth", 'rule("four of CCK, OFDM, HTMIX, GREENFIELD joined by ;")'),
    "wifimgr_lib_set_wdskey": ("Wds%dKey", "kLink", "kFromZero", "kOnBoth", 'rule("a WEP or WPA key, by the link\'s cipher")'),
}
for number in range(1, 5):
    OWN_RULES[f"wifimgr_lib_set_key{number}Type"] = (f"Key{number}Type", "kSsid", "kShared", "kOnBoth", "number(0, 1)")
    OWN_RULES[f"wifimgr_lib_set_key{number}Str"] = (f"Key{number}Str%d", "kSsid", "kFromOne", "kOnBoth", "any_text()")

# Setters of the common type that only send an order, or copy another one; nothing of theirs is in a dat file.
NO_SETTINGS = {"wifimgr_lib_set_wscMode", "wifimgr_lib_set_wscPinCode", "wifimgr_lib_set_wscGenPinCode"}

SECRETS = re.compile(r"WPAPSK|Key\dStr|RADIUS_Key|WdsKey")


def split_row(text):
    """The arguments of a row: commas inside quotes and brackets do not count."""
    words, depth, quoted, word = [], 0, False, ""
    for c in text:
        if c == '"':
            quoted = not quoted
        if not quoted:
            depth += (c in "(<") - (c in ")>")
        if c == "," and depth == 0 and not quoted:
            words.append(word.strip())
            word = ""
        else:
            word += c
    return words + [word.strip()]


def rows_of(path, macros):
    for line in path.read_text(encoding="utf-8").splitlines():
        match = re.match(r"(\w+)\((.*)\)$", line)
        if match and match.group(1) in macros:
            yield match.group(1), split_row(match.group(2))


def accepted(text, sources):
    text = text.strip("()") if text.startswith("(") else text
    match = re.match(r"passing\((\w+)\)|(is_\w+)$", text)
    if match:
        name = match.group(1) or match.group(2)
        if name in WORD_LISTS:
            words = re.search(WORD_LISTS[name] + r"\[\]\[\d+\] = \{([^}]*)\}", sources).group(1)
            return 'words("' + " ".join(re.findall(r'"(\w+)"', words)) + '")'
        return PREDICATES[name]
    match = re.match(r"is_within<(\d+), (\d+)>?$", text)
    if match:
        return f"number({match.group(1)}, {match.group(2)})"
    return text


def library_rows(folder):
    sources = (folder / "params/per_ssid.cpp").read_text(encoding="utf-8")
    rows = dict(OWN_RULES)
    for macro, words in rows_of(folder / "params/band_wide.def", {"BAND", "HT_GROUP", "BAND_SETTER", "HT_GROUP_SETTER"}):
        setter, key, takes = words[:3] if macro.endswith("SETTER") else words[1:4]
        rows[setter] = (key.strip('"'), "kBand", "kShared", "kOnBoth", accepted(takes, sources))
    for macro, words in rows_of(folder / "params/per_ssid.def", {"SSID", "SSID_SETTER"}):
        setter, key, numbering, takes = words[:4] if macro.endswith("SETTER") else words[1:5]
        rows[setter] = (key.strip('"'), "kSsid", numbering, "kOnBoth", accepted(takes, sources))
    for _, words in rows_of(folder / "params/wmm.def", {"WMM_LIST"}):
        rows[words[1]] = (words[2].strip('"'), "kBand", "kShared", "kOnBoth", 'rule("four numbers joined by ;")')
    for _, words in rows_of(folder / "wps/setting.def", {"WPS_STORED"}):
        rows[words[0]] = (words[1].strip('"'), "kSsid", "kShared", "kOnBoth", accepted(words[3], sources))
    return rows


def header_setters(folder):
    header = (folder / "include/wifimgr_lib.h").read_text(encoding="utf-8")
    pattern = r"WIFIMGR_API uint64_t (\w+_set_\w+)\(uint32_t wifi_type, int32_t \w+, const char\* value\);"
    return set(re.findall(pattern, header))


def main(folder):
    library = library_rows(folder)
    tool = {}
    findings = []
    for _, words in rows_of(folder / "wlanctl/keys/key.def", {"KEY"}):
        name, key, scope, numbering, bands, setter, takes, _, secrecy = words
        tool[setter] = (key.strip('"'), scope, numbering, bands, takes)
        name = name.strip('"')
        if name != tool[setter][0].replace("%d", ""):
            findings.append(f"{name}: its dat key is {tool[setter][0]}")
        if (secrecy == "kSecret") != bool(SECRETS.fullmatch(name)):
            findings.append(f"{name}: {secrecy}")
    for setter in sorted(library.keys() | tool.keys()):
        if library.get(setter) != tool.get(setter):
            findings.append(f"{setter}: library {library.get(setter)}, wlanctl {tool.get(setter)}")
    for setter in sorted(header_setters(folder) ^ (set(tool) | NO_SETTINGS)):
        findings.append(f"{setter}: in the header or in wlanctl's table, not in both")
    print(f"{len(tool)} settings")
    for finding in findings:
        print(finding)
    return 1 if findings or len(tool) < 100 else 0


if __name__ == "__main__":
    sys.exit(main(pathlib.Path(sys.argv[1])))
