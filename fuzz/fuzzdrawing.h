#pragma once

#include "platform/base/vexmachine.h"

#include <cstddef>
#include <cstdint>
#include <vector>

class CVexDbDatabase;

/// Where the tables of a drawing file begin: behind the fixed blocks and the plane.
constexpr std::size_t kTablesAt = 0x59f6;
/// The picture in the header, which nobody looks at: a fuzzer's bytes are better spent elsewhere.
constexpr std::size_t kThumbnailAt = 0x0506;
constexpr std::size_t kThumbnailSize = 0x4f38;
/// The largest allocation that a file may ask for here.
constexpr std::size_t kMostBytes = std::size_t{64} << 20;

/// Says nothing and knows its clock, so that every run of an input is the same.
class CFuzzMachine : public CVexMachine {
public:
    VexMoment utcNow() const override { return {}; }
    VexMoment localNow() const override { return {}; }
    double steadySeconds() const override { return 0.0; }
    CString computerName() const override { return L"desk"; }
    CString userName() const override { return L"user"; }
    std::uint64_t identifierSeed() const override { return 0x1000; }
    bool mayAllocate(std::size_t bytes) const override { return bytes <= kMostBytes; }
    void report(const CString&) override {}
};

/// Aborts the process, with these words, when something that must hold does not.
void require(bool holds, const char* what);
/// Every fault of the drawing's structure aborts.
void requireWhole(CVexDbDatabase& drawing);
/// The drawing as a file.
std::vector<std::byte> savedDrawing(CVexDbDatabase& drawing);
/// Reads the file into a fresh drawing and uses that as a host does: check, draw, query, save, read
/// again. Aborts the process when something that must hold does not.
void exerciseFile(const std::vector<std::byte>& file);
/// Saves the drawing and reads that again, which must find nothing wrong.
void requireSavesWhole(CVexDbDatabase& drawing);
/// Edits the first polylines of a drawing, whatever they are made of, by all that a polyline can,
/// and takes it back.
void editPolylines(CVexDbDatabase& drawing);
/// Checks, draws and queries a drawing that stands already.
void exerciseDrawing(CVexDbDatabase& drawing);
