#pragma once

#include "vexge/geentity2d/vexgecircarc2d.h"
#include "vexge/geentity2d/vexgeline2d.h"
#include "vexge/geentity2d/vexgepolyline2d.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <sstream>
#include <string>

/// A picture of chains, y up, for a person to look at: one file a case, written when it is
/// destroyed, into the folder that VEX_OFFSET_PICTURES names. Without one nothing is written.
class OffsetPicture {
public:
    explicit OffsetPicture(const std::string& name) : m_name(name) {}
    ~OffsetPicture()
    {
        if (const char* folder = std::getenv("VEX_OFFSET_PICTURES"); folder != nullptr) {
            write(folder);
        }
    }
    OffsetPicture(const OffsetPicture&) = delete;
    OffsetPicture& operator=(const OffsetPicture&) = delete;

    void add(const CVexGePolyline2d& chain, const char* colour)
    {
        m_paths << "<path stroke=\"" << colour << "\" d=\"";
        for (unsigned i = 0; i < chain.numVerts(); ++i) {
            CVexGeLine2d line;
            CVexGeCircArc2d arc;
            if (chain.getLineSegAt(i, line)) {
                put('M', line.startPoint());
                put('L', line.endPoint());
            } else if (chain.getArcSegAt(i, arc)) {
                const int large = std::fabs(chain.getBulgeAt(i)) > 1.0 ? 1 : 0;
                put('M', arc.startPoint());
                m_paths << 'A' << arc.radius() << ' ' << arc.radius() << " 0 " << large << " 0";
                put(' ', arc.endPoint());
                include(arc.pointAtParam(0.5));
            }
        }
        m_paths << "\"/>\n";
    }

private:
    void write(const std::filesystem::path& folder) const
    {
        std::filesystem::create_directories(folder);
        std::ofstream file(folder / (m_name + ".svg"));
        const double margin = 0.05 * std::max(m_right - m_left, m_top - m_bottom) + 0.5;
        const double width = m_right - m_left + 2.0 * margin;
        const double height = m_top - m_bottom + 2.0 * margin;
        file << "<svg xmlns=\"http://www.w3.org/2000/svg\" width=\"600\" height=\""
             << 600.0 * height / width << "\" viewBox=\"" << m_left - margin << " "
             << -(m_top + margin) << " " << width << " " << height << "\">\n"
             << "<rect x=\"" << m_left - margin << "\" y=\"" << -(m_top + margin) << "\" width=\""
             << width << "\" height=\"" << height << "\" fill=\"white\"/>\n"
             << "<g fill=\"none\" stroke-width=\"" << 0.004 * width << "\">\n"
             << m_paths.str() << "</g>\n</svg>\n";
    }
    void put(char command, const CVexGePoint2d& point)
    {
        include(point);
        m_paths << command << point.x << ' ' << -point.y;
    }
    void include(const CVexGePoint2d& point)
    {
        m_left = std::min(m_left, point.x);
        m_right = std::max(m_right, point.x);
        m_bottom = std::min(m_bottom, point.y);
        m_top = std::max(m_top, point.y);
    }

    std::string m_name;
    std::ostringstream m_paths;
    double m_left = 1e9;
    double m_right = -1e9;
    double m_bottom = 1e9;
    double m_top = -1e9;
};
