// All verbs, by the file that has them.
#pragma once

#include "wlanctl/command_line/verb.h"

namespace wlanctl {

const Program& program();

// settings/
extern const Verb kShow;
extern const Verb kGet;
extern const Verb kSet;
extern const Verb kKeys;
extern const Verb kExplain;
extern const Verb kCheck;
extern const Verb kDump;
extern const Verb kEdit;
extern const Verb kExport;
extern const Verb kImport;
// ssid/
extern const Verb kSsid;
extern const Verb kSsidAdd;  // this and those that follow are below it
extern const Verb kSsidList;
extern const Verb kSsidRemove;
// apply/
extern const Verb kDiff;
extern const Verb kSave;
extern const Verb kRevert;
extern const Verb kApply;
extern const Verb kConfirm;
extern const Verb kRollback;
extern const Verb kLog;
extern const Verb kUndo;
// live/
extern const Verb kStatus;
extern const Verb kStations;
extern const Verb kNeighbours;
extern const Verb kWps;
extern const Verb kRadio;
extern const Verb kMonitor;
// board/
extern const Verb kLed;
extern const Verb kButton;
extern const Verb kCalibration;
extern const Verb kTrace;
extern const Verb kUnlock;
extern const Verb kDoctor;

extern const Verb kCompletion;
extern const Verb kHelp;

}  // namespace wlanctl
