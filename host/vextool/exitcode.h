#pragma once

/// What vextool answers to its caller.
enum ExitCode : int {
    kExitGood = 0,
    kExitFaults = 1,     // the drawing has faults, of which what was whole was used; or a script's
                         // line was refused
    kExitUsage = 2,      // wrong use of the command line
    kExitUnreadable = 3, // an input cannot be read
    kExitUnwritable = 4, // an output cannot be written; nothing half-written is left
};
