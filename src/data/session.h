// What the rooms above work over, handed in from the program's start on down: its settings, its journal and
// the one filter.
#pragma once

class DbJournal;
class RegistryStore;
struct FilterState;

// Borrowed. All three outlive whoever is given them.
struct Session {
    RegistryStore& settings;
    DbJournal& journal;
    FilterState& filter;
};
