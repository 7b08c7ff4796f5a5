#pragma once

#include <QString>

// The user's settings kept between runs in options.ini, a fixed sequence of
// seven lines in the program's directory.
struct Options
{
    qint16 AutoCloseSplash = 0; // 1: the splash closes itself when start-up ends
    bool FirstRun = false; // the first-run setup must run
    QString ConfigPath; // where configurations are kept; ends with the separator once set
    QString UTPath; // the game directory; ends with the separator once set
};

// The settings the whole program reads.
Options &AppOptions();

// Reads ProgramDir() + "options.ini" into AppOptions(); a missing file means a
// first run. Throws RunError 62 (values read so far are kept) for a file
// shorter than seven lines; 13, 6 or 380 for a line 2 that is not a
// number, not 16 bits or not 0, 1 or 2 (AutoCloseSplash is then unchanged).
void LoadOptions();
// Writes AppOptions() to ProgramDir() + "options.ini", replacing it atomically.
void SaveOptions();
