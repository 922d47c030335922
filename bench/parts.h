#pragma once

#include "options.h"
#include "report.h"

/// What the bench measures, part by part; each writes its figures to the report.
namespace bench {

/// Scan and whole refresh against the floor, and against peers, and what a program that samples
/// keeps, for each size of population.
void measureRefresh(const Options& options, Report& report);

/// A whole refresh where there are 40 AI workloads, a family of 13 among them, and 2 graphics
/// cards, against the floor, and that against the same without any, for each size of population.
void measureWork(const Options& options, Report& report);

/// What the terminal and the tray take at their own pace, beside top, htop and btop at the same;
/// how soon the terminal paints; and what it keeps of memory.
void measurePace(const Options& options, Report& report);

/// Classifying, naming, redacting, masking, sorting and building the menu, each alone.
void measureSteps(const Options& options, Report& report);

/// Each masker and each of its searches on 64 KiB of the worst text for it.
void measureCredentials(const Options& options, Report& report);

/// How the cost grows with the number of processes and the length of their command lines.
void measureGrowth(const Options& options, Report& report);

/// The program at rest, by front end.
void measureRest(const Options& options, Report& report);

/// What opening the menu and an alert costs when others choose the names of what they show.
void measureOpening(const Options& options, Report& report);

/// What filtering thousands of rows costs at each letter.
void measureLongList(const Options& options, Report& report);

/// What a program that samples keeps, in bytes of anonymous memory, between refreshes; to be
/// asked of a program that has done nothing else.
double sampledMemory();

/// The same of the bench's own program, started anew for it.
double sampledMemoryOfFreshProgram();

}  // namespace bench
