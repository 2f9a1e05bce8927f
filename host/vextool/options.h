#pragma once

#include <CLI/CLI.hpp>
#include <array>
#include <memory>
#include <string>
#include <vector>

/// What the command line asked for, all subcommands together.
struct Options {
    bool quiet = false;
    std::string input;
    std::vector<std::string> inputs;
    std::string output;

    // new
    std::string from;
    bool paperSpace = false;
    // info
    bool json = false;
    // render
    std::array<int, 2> size{1600, 1000};
    bool sizeGiven = false;
    std::array<double, 4> window{}; // left, bottom, right, top
    bool windowGiven = false;       // else the drawing is fitted
    std::string scale;
    std::string background = "black";
    bool mono = false;
    // run
    std::string script;
    std::string png;
    bool verbose = false;
    bool keepGoing = false;
    // scrub
    bool inPlace = false;
    // docs
    bool man = false;
    bool bashCompletion = false;
};

/// The command line as a table: parsing, help, man page and shell completion all come from it.
/// `options` must outlive the result.
std::unique_ptr<CLI::App> makeCommandLine(Options& options);

/// The manual page in roff, and a completion script for bash.
std::string manualPage(const CLI::App& app);
std::string bashCompletion(const CLI::App& app);
