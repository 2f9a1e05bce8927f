#pragma once

#include "host/vextool/exitcode.h"
#include "host/vextool/options.h"

// A subcommand each: what it finds goes to standard output, messages to standard error.
ExitCode runNew(const Options& options);
ExitCode runInfo(const Options& options);
ExitCode runCheck(const Options& options);
ExitCode runDump(const Options& options);
ExitCode runRender(const Options& options);
ExitCode runRun(const Options& options);
ExitCode runScrub(const Options& options);
