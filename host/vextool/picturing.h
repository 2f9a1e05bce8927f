#pragma once

#include <limits>
#include <memory>
#include <optional>

class CVexBackend;
class CVexDbDatabase;

/// A box of drawing units, left <= right, bottom <= top.
struct VexExtents {
    double left = 0.0;
    double bottom = 0.0;
    double right = 0.0;
    double top = 0.0;
};

/// The box around all visible entities of the current view, but for the coordinates that are
/// farther than `farthest` from the axes or no numbers; none when there is nothing else.
std::optional<VexExtents> drawingExtents(CVexDbDatabase& database,
                                         double farthest = std::numeric_limits<double>::max());

/// Puts a backend with pixels in force for a scope.
class PictureBackend {
public:
    PictureBackend();
    ~PictureBackend();
    PictureBackend(const PictureBackend&) = delete;
    PictureBackend& operator=(const PictureBackend&) = delete;

private:
    std::unique_ptr<CVexBackend> m_backend;
    CVexBackend* m_before;
};
