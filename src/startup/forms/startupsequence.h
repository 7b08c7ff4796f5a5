#pragma once

#include "catalogue/scan.h"

#include <functional>

class QWidget;

// The catalogue's windows that the start-up shows on its way.
struct StartupForms
{
    // The unmatched skin report and the pattern editor, shown by the scan.
    ScanForms scan;
    // The boss model choice of a first run, modal over `owner` (the splash);
    // shown only when the game has the boss package.
    std::function<void(QWidget *owner)> showNewBoss;
};

// Where the start-up gets those windows from; the catalogue's own forms
// unless replaced (tests do). nullptr restores them.
void setStartupForms(std::function<StartupForms()> forms);

// Set by the options dialog before it runs Main again after the game
// directory changed; Main clears it once the options are loaded.
bool &RestartRequested();

// Set when the user chose to quit during the start-up (there was no game
// folder to work with): the program ends as the user asked, not in failure.
bool &QuitChosenAtStartup();

// The start-up: shows the splash, loads the options, asks for the game and
// configuration directories where they are unknown or wrong, loads the skin
// patterns, scans the game's content, prepares the main window without
// showing it and hands over to the splash's Close, which shows it.
//
// Returns once start-up has handed over or is waiting for the user's Close.
// An error it cannot recover from is reported once and leaves neither the
// splash nor the main window, so the caller knows the program cannot go on
// when no window is left.
void Main();

// The vertical distance, in pixels of `window`'s screen, by which the path
// dialogs sit above the splash's centre: 650 twips, a little less than half
// an inch.
int PathDialogLift(const QWidget &window);
