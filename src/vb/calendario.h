#pragma once

// Calendar and period arithmetic on automation dates: packed day (yyyymmdd),
// week (yyyyww) and month (yyyymm) numbers. Pure functions, so that the
// engine's automation calls and the metric run-time share one copy. None of
// them reports an error: an input whose parts overflow gives date 0
// (1899-12-30) or the number 0.
namespace vb::calendario {

int weekNum(double d);
double iniMes(int V);
double finMes(int V);
double dayOfWeekNum(int W);
double numToDate(int n);
int dayToNum(double f);

} // namespace vb::calendario
