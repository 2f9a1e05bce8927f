#pragma once

#include "fuzz/fuzzdrawing.h"
#include "platform/base/vexfilelayer.h"

#include <algorithm>
#include <cstring>
#include <vector>

/// Every path leads to the same bytes.
class COneFileLayer : public CVexFileLayer {
public:
    COneFileLayer(const std::uint8_t* data, std::size_t size) : m_data(data), m_size(size) {}
    int openRead(const std::string&) override
    {
        m_at = 0;
        return 1;
    }
    std::int64_t read(int, void* buffer, std::size_t count) override
    {
        const std::size_t given = std::min(count, m_size - m_at);
        if (given > 0) {
            std::memcpy(buffer, m_data + m_at, given);
        }
        m_at += given;
        return static_cast<std::int64_t>(given);
    }
    std::int64_t seek(int, std::int64_t offset) override
    {
        m_at = std::min(static_cast<std::size_t>(offset), m_size);
        return static_cast<std::int64_t>(m_at);
    }
    int close(int) override { return 0; }
    int status(const std::string&, VexFileStatus& status) override
    {
        status.kind = VexFileStatus::Kind::kFile;
        status.size = m_size;
        return 0;
    }

private:
    const std::uint8_t* m_data;
    std::size_t m_size;
    std::size_t m_at = 0;
};

/// A machine with one file.
class COneFileMachine : public CFuzzMachine {
public:
    COneFileMachine(const std::uint8_t* data, std::size_t size) : m_layer(data, size) {}
    CVexFileLayer& files() override { return m_layer; }

private:
    COneFileLayer m_layer;
};
