#include "platform/base/cfile.h"
#include "platform/base/ctime.h"
#include "platform/base/vexmachine.h"
#include "platform/base/vextext.h"
#include "vexdb/dbobject/dbentity/vexdbentity.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexdb/vexdbdatabase.h"
#include "vexdb/vexdbloadcontext.h"

#include <array>
#include <cstring>
#include <string>

namespace {

/// A path in its parts. Both separators count: drawings travel between systems.
struct PathParts {
    CString folder; // all before the last separator
    CString title;  // the file name up to its last point
    CString bare;   // the path up to that point
};

PathParts partsOf(const CString& path)
{
    const std::wstring& text = path.str();
    const std::size_t separator = text.find_last_of(L"/\\");
    const std::size_t nameAt = separator == std::wstring::npos ? 0 : separator + 1;
    // Only a point of the file's own name begins an extension, never one of a folder's name.
    std::size_t point = text.rfind(L'.');
    if (point == std::wstring::npos || point < nameAt) {
        point = text.size();
    }
    PathParts parts;
    parts.folder = CString(text.substr(0, nameAt == 0 ? 0 : separator));
    parts.title = CString(text.substr(nameAt, point - nameAt));
    parts.bare = CString(text.substr(0, point));
    return parts;
}

CString backupPathOf(const CString& path)
{
    return partsOf(path).bare + L".bak";
}

bool isSameFile(const VexFileStatus& a, const VexFileStatus& b)
{
    return b.kind != VexFileStatus::Kind::kMissing && a.device == b.device && a.inode == b.inode;
}

CString reasonOf(const CFile& file)
{
    return file.error() == 0 ? CString() : L": " + CString::fromUtf8(std::strerror(file.error()));
}

// The first entity whose extended data a file cannot hold; null when there is none.
CVexDbEntity* findOversized(CVexDbDatabase& database)
{
    for (const auto& [name, record] : database.blocks().records()) {
        const CVexDbIdSet& set = *static_cast<CVexDbBlockTableRecord&>(*record).entitySet();
        for (auto at = set.begin(); at != set.end(); ++at) {
            auto* entity = static_cast<CVexDbEntity*>(at.object());
            if (!xdataFits(entity->xData())) {
                return entity;
            }
        }
    }
    return nullptr;
}

/// A table and what a message calls it.
struct NamedTable {
    CVexDbTable* table;
    const wchar_t* name;
};

// In the order of the file: a table is there before anything refers to its records.
std::array<NamedTable, 8> tablesInFile(CVexDbDatabase& database)
{
    return {{{&database.colors(), L"colour"},
             {&database.linetypes(), L"linetype"},
             {&database.layers(), L"layer"},
             {&database.textStyles(), L"text style"},
             {&database.symbols(), L"symbol"},
             {&database.projectInfos(), L"project information"},
             {&database.revisions(), L"revision"},
             {&database.blocks(), L"block"}}};
}

} // namespace

CString CVexDbDatabase::FilePath() const
{
    return CString(m_header.m_szFolder);
}

CString CVexDbDatabase::Author() const
{
    return CString(m_header.m_szUser);
}

CString CVexDbDatabase::Date() const
{
    return CString(m_header.m_szDate);
}

CString CVexDbDatabase::FileVersion() const
{
    return CString(m_header.m_szVersion);
}

void CVexDbDatabase::setFilePath(const CString& folder)
{
    copyText(m_header.m_szFolder, folder);
}

void CVexDbDatabase::setAuthor(const CString& user)
{
    copyText(m_header.m_szUser, user);
}

void CVexDbDatabase::setDate(const CString& date)
{
    copyText(m_header.m_szDate, date);
}

void CVexDbDatabase::setFileVersion(const CString& version)
{
    copyText(m_header.m_szVersion, version);
}

bool CVexDbDatabase::Save(CArchive& archive)
{
    m_report = VexDbLoadReport();
    m_file = archive.GetFile();
    if (m_file == nullptr || !m_file->isWriting()) {
        return saveRefused(L"its file is not open for writing");
    }
    for (const NamedTable& each : tablesInFile(*this)) {
        if (each.table->liveCount() > CVexDbTable::kMostRecordsInFile) {
            return saveRefused(CString(L"the ") + each.name +
                               L" table has more than 65535 records");
        }
    }
    fillHeader(m_file->GetFilePath());
    DrawThumnail();
    // The file keeps what it replaces under this name when it is closed: a whole drawing stands
    // under the target's own name at every moment.
    m_file->setBackupPath(backupPathOf(m_file->GetFilePath()));
    refreshSavedNames();
    if (writeAll() && !m_file->failed()) {
        return true;
    }
    if (const CVexDbEntity* entity = findOversized(*this)) {
        CString what;
        what.Format(L"entity %u has extended data of more than 65535 parts",
                    entity->getCreatedTime());
        return saveRefused(what);
    }
    return saveRefused(L"its file cannot be written" + reasonOf(*m_file));
}

// What the head of the file tells about the saving itself.
void CVexDbDatabase::fillHeader(const CString& path)
{
    const CVexMachine& machine = CVexMachine::current();
    // Whoever saved the drawing first stays its author.
    if (m_header.m_szComputer[0] == L'\0') {
        copyText(m_header.m_szComputer, machine.computerName());
    }
    if (m_header.m_szUser[0] == L'\0') {
        copyText(m_header.m_szUser, machine.userName());
    }
    copyText(m_header.m_szDate, CTime::GetCurrentTime().Format(L"%Y-%m-%d"));
    const PathParts parts = partsOf(path);
    copyText(m_header.m_szFolder, parts.folder);
    copyText(m_header.m_szTitle, parts.title);
}

void CVexDbDatabase::refreshSavedNames()
{
    const auto refresh = [](wchar_t(&name)[81], const CVexDbObjectId& id) {
        if (const auto* record = static_cast<const CVexDbTableRecord*>(id.getPObject())) {
            copyText(name, record->name());
        }
    };
    refresh(m_settings.m_szLayer, currentLayer());
    refresh(m_settings.m_szLinetype, currentLinetype());
    refresh(m_settings.m_szTextStyle, currentTextStyle());
    const auto* color = static_cast<CVexDbColorTableRecord*>(currentColor().getPObject());
    if (color != nullptr) {
        m_settings.m_nColorIndex = static_cast<std::int16_t>(color->colorIndex());
    }
}

bool CVexDbDatabase::writeAll()
{
    if (!m_header.save(*m_file) || !m_settings.save(*m_file) || !m_dimSettings.save(*m_file)) {
        return false;
    }
    m_plane.save(m_file);
    for (const NamedTable& each : tablesInFile(*this)) {
        if (!each.table->save()) {
            return false;
        }
    }
    return true;
}

// Tells the one message of a save that failed, and gives the file up; always false.
bool CVexDbDatabase::saveRefused(const CString& what)
{
    CString message = L"The drawing";
    if (m_file != nullptr) {
        message += L" '" + m_file->GetFilePath() + L"'";
        m_report.add(what, m_file->GetPosition());
        m_file->Abort();
    } else {
        m_report.add(what, 0);
    }
    CVexMachine::current().report(message + L" was not saved: " + what);
    return false;
}

bool CVexDbDatabase::SaveAs(const CString& path)
{
    CFile file;
    if (!file.Open(path, CFile::modeCreate | CFile::modeWrite)) {
        m_report = VexDbLoadReport();
        m_file = &file;
        const bool refused = saveRefused(L"its file cannot be made" + reasonOf(file));
        m_file = nullptr;
        return refused;
    }
    CArchive archive(&file, CArchive::store);
    bool stands = Save(archive);
    archive.Close();
    if (stands && !file.Close()) {
        stands = saveRefused(L"its file cannot be written" + reasonOf(file));
    }
    m_file = nullptr; // it ends with this call
    return stands;
}

bool CVexDbDatabase::Read(CArchive& archive)
{
    m_report = VexDbLoadReport();
    m_file = archive.GetFile();
    if (m_file == nullptr || !m_file->isOpen() || m_file->isWriting()) {
        m_report.add(L"It is not open for reading.", 0);
        return readRefused(m_report.faults.front());
    }
    CVexDbLoadContext context(*this, m_report);
    m_loading = &context;
    readAll();
    context.finish();
    m_loading = nullptr;
    selectSavedCurrents();
    return context.isDamaged() ? readRefused(context.firstFault()) : true;
}

// Reads as far as the file makes sense; what keeps it from making sense is in the report.
void CVexDbDatabase::readAll()
{
    CVexDbLoadContext& context = *m_loading;
    const auto endsIn = [&](const CString& part) {
        if (!context.isDamaged()) {
            context.fault(m_file->error() != 0
                              ? L"The file cannot be read" + reasonOf(*m_file) + L"."
                              : L"The file ends in " + part + L".");
        }
    };
    if (!m_header.read(*m_file) || !m_settings.read(*m_file) || !m_dimSettings.read(*m_file)) {
        return endsIn(L"its fixed blocks");
    }
    m_plane.read(m_file);
    for (const NamedTable& each : tablesInFile(*this)) {
        context.enterTable();
        if (!each.table->read() || m_file->failed()) {
            return endsIn(CString(L"the ") + each.name + L" table");
        }
    }
    if (m_file->remaining() > 0) {
        CString what;
        what.Format(L"%u bytes follow the end of the drawing.", m_file->remaining());
        context.fault(what);
    }
}

// The space and the current records by the settings of the file. A name that the drawing lacks
// leaves the record of before.
void CVexDbDatabase::selectSavedCurrents()
{
    switch (m_settings.m_nCurrentSpace) {
    case 0: m_blocks.SetCurentSpace(CVexDbBlockTable::kModelSpace); break;
    case 1: m_blocks.SetCurentSpace(CVexDbBlockTable::kPaperSpace); break;
    default: break; // no space of that number: the block read last stays current
    }
    CVexDbObjectId layer = currentLayer();
    m_layers.getAt(m_settings.m_szLayer, layer, false);
    setCurrentLayer(layer);
    CVexDbObjectId linetype = currentLinetype();
    m_linetypes.getAt(m_settings.m_szLinetype, linetype, false);
    setCurrentLinetype(linetype);
    CString index;
    index.Format(L"%d", static_cast<int>(m_settings.m_nColorIndex));
    CVexDbObjectId color = currentColor();
    if (!m_colors.getAt(index, color, false)) {
        m_colors.getAt(CVexDbColorTableRecord::kByLayer, color, false);
    }
    setCurrentColor(color);
    CVexDbObjectId style = currentTextStyle();
    m_textStyles.getAt(m_settings.m_szTextStyle, style, false);
    setCurrentTextStyle(style);
}

// Tells the one message of a read that failed: its first fault, and where. Always false.
bool CVexDbDatabase::readRefused(const VexDbFault& fault)
{
    CString message = L"The drawing";
    if (m_file != nullptr) {
        message += L" '" + m_file->GetFilePath() + L"'";
    }
    CString where;
    where.Format(L" is damaged at byte %u: ", fault.offset);
    CString kept;
    kept.Format(L" (%u objects were whole)", m_report.objectsKept);
    CVexMachine::current().report(message + where + fault.what + kept);
    return false;
}

void CVexDbDatabase::MakeBakFile(const CString& path)
{
    CVexFileLayer& files = CVexMachine::current().files();
    const std::string name = path.utf8();
    const std::string backup = backupPathOf(path).utf8();
    VexFileStatus drawing;
    VexFileStatus before;
    if (files.status(name, drawing) < 0 || drawing.kind != VexFileStatus::Kind::kFile ||
        files.status(backup, before) < 0) {
        return;
    }
    if (name == backup || isSameFile(drawing, before)) {
        return; // a file that is its own backup would be deleted
    }
    if (before.kind != VexFileStatus::Kind::kMissing && files.remove(backup) < 0) {
        return;
    }
    files.rename(name, backup);
}
