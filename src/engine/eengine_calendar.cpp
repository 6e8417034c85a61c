// EEngine's calendar calls: the automation face of the shared calendar
// arithmetic, which the metric run-time calls too.
#include "eengine.h"

#include "vb/calendario.h"

int EEngine::WeekNum(double d) { return vb::calendario::weekNum(d); }
double EEngine::IniMes(int V) { return vb::calendario::iniMes(V); }
double EEngine::FinMes(int V) { return vb::calendario::finMes(V); }
double EEngine::day_ofweeknum(int W) { return vb::calendario::dayOfWeekNum(W); }
double EEngine::numtodate(int n) { return vb::calendario::numToDate(n); }
int EEngine::daytonum(double f) { return vb::calendario::dayToNum(f); }
