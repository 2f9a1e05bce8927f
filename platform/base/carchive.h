#pragma once

#include "platform/base/cfile.h"
#include "platform/base/vexexport.h"

/// The document framework's wrapper around a file. The library takes the file out of it and
/// writes or reads that; nothing of the archive's own encodings is in a drawing.
class CArchive {
public:
    enum Mode { store, load };
    CArchive(CFile* file, Mode mode) : m_file(file), m_mode(mode) {}
    [[nodiscard]] CFile* GetFile() const { return m_file; }
    [[nodiscard]] bool IsStoring() const { return m_mode == store; }
    /// Lets the file go; closing it is its owner's task.
    void Close() { m_file = nullptr; }

private:
    CFile* m_file;
    Mode m_mode;
};
