#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/device/vexdevicetypes.h"
#include "platform/window/vexbackend.h"
#include "vexdb/dbcommand/vexcommandid.h"
#include "vexdb/dbcommand/vexinputresult.h"
#include "vexdb/dbcommand/vextrackerlist.h"
#include "vexdb/dbobject/dbentity/vexdbentityset.h"
#include "vexdb/dbobject/dbentity/vexdbxdata.h"
#include "vexge/gemath/vexgepoint2d.h"

#include <map>
#include <memory>
#include <string>
#include <vector>

class CDC;
class CVexDbDatabase;
class CVexDbEntity;
class CVexDbEntityTracker;
class CVexDbPolyline;
class CVexPromptHandler;
class CWnd;

namespace VexDb {
enum TransFormOption : int;
}

/// The key that was held when a tracker took its last click.
enum class VexModifier : int { kNone = 0, kCtrl = 1, kShift = 2, kAlt = 3 };

/// The interpreter between a host and the drawing: prompts, typed text, picks, snaps, selection and
/// the commands. A command is one blocking call; every input runs its own pump with the mouse
/// captured by the display window, and hands on what it does not consume.
class VEXDB_EXPORT CVexCommandHandler {
public:
    /// Takes the process-wide prompts and loads the command names beside the program.
    explicit CVexCommandHandler(CVexDbDatabase* database);
    /// Trackers go without drawing.
    virtual ~CVexCommandHandler();
    CVexCommandHandler(const CVexCommandHandler&) = delete;
    CVexCommandHandler& operator=(const CVexCommandHandler&) = delete;

    // Set-up. Nothing of it is owned.
    void SetDatabase(CVexDbDatabase* database) { m_database = database; }
    void SetPromptHandle(CVexPromptHandler* prompts) { m_prompts = prompts; }
    void SetDispWindow(CWnd* window) { m_display = window; }
    void SetMsgWindow(CWnd* window) { m_message = window; }
    void setMsgWindow(CWnd* history, CWnd* message);
    void SetSelCursor(VexCursor cursor) { m_selectionCursor = cursor; }
    void SetCrossCursor(VexCursor cursor) { m_crossCursor = cursor; }
    // Null for none, and for one that is gone: a host may close it while a command waits.
    [[nodiscard]] CWnd* GetDispWindow() const;
    [[nodiscard]] CWnd* messageWindow() const;
    [[nodiscard]] CVexDbDatabase* database() const { return m_database; }
    /// The history.
    [[nodiscard]] CString getStrings() const { return m_historyText; }

    // Commands.
    /// Runs one to its end. `step` is the command's mode word, in and out. A creating command gives
    /// its new entity, the caller's to add; null on a cancel, for commands that make none, for
    /// reserved numbers and while another command runs.
    CVexDbEntity* DoCommand(VexDb::CommandID id, unsigned long& step);
    /// Sends the host its own command number as WM_COMMAND and keeps it for Enter; 0 sends nothing.
    /// Always true.
    bool RunCommand(unsigned long number);
    /// A command was started by menu or button: Enter repeats it, the text that was read last goes
    /// into the history, and the message line is emptied.
    void SetLastCommand(unsigned long number);
    [[nodiscard]] unsigned long lastCommand() const { return m_lastCommand; }
    /// The number of a command name in any case; 0 for an unknown one.
    [[nodiscard]] unsigned long getCommandId(const CString& name) const;
    /// Enters the names of one line "number name name..."; gives the number of names there are. A
    /// name that is there already keeps its number.
    int addCommand(const CString& line);
    /// Reads "VexDb.cmd" beside the program; gives the number of names there are.
    int LoadCommandFrom();
    [[nodiscard]] int commandCount() const { return m_commandCount; }

    // Events that the host forwards.
    /// A key of the message window; true when it was consumed.
    bool onKeyDown(unsigned key, unsigned repeat, unsigned flags);
    /// Characters reach the message line by the window itself.
    void onChar(unsigned, unsigned, unsigned) {}
    void OnComposition(unsigned wParam, long lParam);
    /// Flushes the message line into the history. False, with the invalid-input prompt behind it,
    /// when what was typed does not fit the prompt.
    bool setMsg();
    /// Draws the grips of the selection after a repaint.
    void TrackerDraw(CDC* dc);
    /// 0 when a grip under the pointer has set its cursor, else -1.
    int SetTrackerCursor(CWnd* window, unsigned hitTest);
    /// A left press: the first tracker whose grip is hit drags it.
    void TrackTracker(CWnd* window, CPoint point);
    /// Adds an entity to the selection. The point plays no part.
    void DoDragEntity(CVexDbEntity* entity, CPoint point);

    // Prompts. Without a message window nothing happens.
    /// Flushes the line and shows a prompt; a negative id does nothing.
    void SetPrompt(int id);
    /// The same with a literal text, which is no prompt of the table: what is typed behind it is
    /// not validated.
    void Prompt(const CString& text);
    [[nodiscard]] int currentPrompt() const { return m_currentPrompt; }
    /// Appends lines to the history without touching the message line.
    void appendHistory(const CString& text);

    // Input. Results are InputResult codes, prompts VexDb::PromptId values.
    int GetGePoint(int prompt, CVexGePoint2d& point);
    /// A point or one of `keys`, of which only the kind of answer is told.
    int GetGePoint(int prompt, CVexGePoint2d& point, const CString& keys);
    int GetGePoint(int prompt, CVexGePoint2d& point, const CString& keys, wchar_t& key);
    /// With a rubber band from `base`; `key` is the one keyword, 0 for none.
    int GetGePoint(int prompt, CVexGePoint2d& point, const CVexGePoint2d& base, wchar_t key);
    /// Two corners, with a band between them.
    int GetGePoint(CVexGePoint2d& first, CVexGePoint2d& second);
    /// Drawing units from `base`, or from a point asked for first when it is null; -1.0 on a
    /// cancel, which callers see by a value not above 0.
    double GetDistance(int prompt, const CVexGePoint2d* base);
    double GetDistance(int prompt, const CVexGePoint2d* base, CVexGePoint2d& end);
    double GetDistance(CVexGePoint2d& base, CVexGePoint2d& end);
    /// Radians; 0.0 on a cancel.
    double GetAngle(int prompt, const CVexGePoint2d* base);
    /// A number above 0 (1.0 for any other), or the key.
    int GetReal(int prompt, wchar_t key, double& value);
    /// A text without blanks, which may be empty.
    int GetString(int prompt, CString& text);
    /// One of `keys`. `key` keeps a refused character: callers set it to 0 first.
    int GetKeyWord(int prompt, const CString& keys, wchar_t& key);
    /// One entity by a click, or the last one by "L".
    int GetEntity(int prompt, CVexDbEntity*& entity, CVexGePoint2d* pickPoint);
    /// Adds what is picked to `entities`; 1 when it holds anything then, else -1.
    int GetEntities(int prompt, VexEntitySet* entities);
    /// The record of the last GetDistance or GetAngle.
    [[nodiscard]] const Return_Struct& resultBuffer() const { return m_result; }

    // What was typed into the message line.
    /// The text behind the first colon, trimmed.
    [[nodiscard]] CString getInputValue() const;
    bool getInputValue(int& value) const;
    bool getInputValue(double& value) const;
    bool getInputValue(CString& value) const;
    bool getInputValue(CVexGePoint2d& value) const;
    /// Whether what was typed fits the current prompt. The argument is not looked at.
    [[nodiscard]] bool isValidValue(const CString& text) const;
    /// Reads the message line, for the forms above.
    void takeInputText();

    // Snapping.
    /// Arms the one-shot snap of a key; false for any other character.
    bool CheckSnapChar(wchar_t character);
    /// Draws the cursor to what the snaps in force find; true when one did. The blip goes from
    /// `previous` to the new place.
    bool CheckSnapPoint(CVexGePoint2d& previous, const CVexGePoint2d& cursor,
                        CVexGePoint2d& result);
    /// Strokes a blip; style 0 repeats the last one, which in XOR takes it off.
    void DrawBlip(const CVexGePoint2d& at, CDC* dc, int style);
    /// Takes a blip off that is on screen.
    void CheckBlipDraw(const CVexGePoint2d& previous);
    [[nodiscard]] bool isBlipDrawn() const { return m_blipDrawn; }
    /// Disarms all three one-shot snaps.
    void clearSnaps();

    // Selection. The handler owns the trackers.
    /// A new tracker for an entity's class, the caller's; null for a class without one.
    CVexDbEntityTracker* CreateTracker(CWnd* window, CVexDbEntity* entity,
                                       VexDb::TransFormOption option, bool createMode);
    void GetSelectedEntity(VexEntitySet& entities) const;
    [[nodiscard]] const VexEntitySet& selectedEntities() const { return m_selected; }
    [[nodiscard]] const std::vector<CVexDbEntityTracker*>& trackers() const
    {
        return m_trackers.all();
    }
    /// Puts a tracker and its entity into the selection and takes it over.
    void AddTracker(CVexDbEntityTracker* tracker);
    /// Drops the tracker and its entity; it is freed when nothing runs in it.
    void RemoveTracker(CVexDbEntityTracker* tracker);
    void DeleteTracker(CVexDbEntity* entity);
    /// With true each tracker goes with its normal end, which draws its entity again. With false
    /// they are abandoned without drawing and freed when no command, track or menu runs.
    void ClearTracker(bool deleteThem);
    /// Drops every trace of an entity that leaves the drawing, without drawing.
    void forgetEntity(const CVexDbEntity* entity);
    /// Drops from the selection what is no longer visible.
    void dropInvisible();

    // What commands and trackers share.
    [[nodiscard]] VexModifier modifier() const { return m_modifier; }
    void setModifier(VexModifier modifier) { m_modifier = modifier; }
    /// The entity most recently made by a creating command; null at start and once it is gone.
    [[nodiscard]] CVexDbEntity* lastEntity() const { return m_lastEntity; }
    void setLastEntity(CVexDbEntity* entity);

    // What polyline commands and the popup menu share. Both are recorded for undo, in the step that
    // is open or in one of their own, so that the bool plays no part.
    /// Cuts a polyline of the drawing at a vertex that is neither its first nor its last; a closed
    /// one is opened at its start. The vertices from there on are a new polyline, the caller's to
    /// add; null, with nothing changed, for another vertex.
    CVexDbPolyline* CommandBreakPolyline(CVexDbPolyline* polyline, int index, bool group);
    /// Joins the polylines, lines and arcs that meet an end of `polyline`, or of what has been
    /// joined to it: they are erased, and leave the set. Always 1.
    int CommandJoinPolyline(CVexDbPolyline* polyline, VexEntitySet& entities, bool group);

    // Blocking calls on the stack.
    /// True while a command, track, menu or selection runs: the host then starts nothing else.
    [[nodiscard]] bool isBusy() const { return m_busy > 0; }
    void enter() { ++m_busy; }
    /// At the last one the lost mark goes, and what was abandoned meanwhile is freed.
    void leave();
    /// The capture was lost, or the host wants the command to end: every later pump of it answers
    /// its cancel at once.
    [[nodiscard]] bool isInputLost() const { return m_inputLost; }
    void markInputLost() { m_inputLost = m_busy > 0; }
    /// Counts the pumps begun: a script sees by it whether its line went to one input.
    [[nodiscard]] unsigned long inputSerial() const { return m_inputSerial; }
    void beginInput() { ++m_inputSerial; }
    /// A quit that came while a pump ran; taking it clears it.
    void keepQuit() { m_quitKept = true; }
    bool takeQuit();
    /// Counts what was refused so far: values that do not fit the kind of their prompt, unknown
    /// commands, commands that are not there yet.
    [[nodiscard]] unsigned long refusals() const { return m_refusals; }
    /// An input has ended with this InputResult. All but a text mean that what stands in the line
    /// served its purpose: it is no refusal, even where the prompt's kind does not know it (a
    /// keyword, "5<90", a click in its place).
    void noteAnswer(int result) { m_answerTaken = result != InputString; }
    /// A host refuses a command of its own.
    void countRefusal() { ++m_refusals; }
    /// The same, with a line in the history that tells why.
    void refuse(const CString& why);

private:
    /// A row of the table of commands; one without a member is not there yet.
    struct CommandRow {
        VexDb::CommandID id;
        const wchar_t* name; // as the history calls it
        CVexDbEntity* (CVexCommandHandler::*run)(unsigned long& step);
    };
    static const CommandRow* commandOf(VexDb::CommandID id);

    // The commands.
    CVexDbEntity* CommandLine(unsigned long& step);
    CVexDbEntity* CommandCircle(unsigned long& step);
    CVexDbEntity* CommandArc(unsigned long& step);
    CVexDbEntity* CommandBox(unsigned long& step);
    CVexDbEntity* CommandRect(unsigned long& step);
    CVexDbEntity* CommandPolyline(unsigned long& step);
    CVexDbEntity* CommandArcPolyline(unsigned long& step);
    CVexDbEntity* CommandPolygon(unsigned long& step);
    CVexDbEntity* CommandPolyStar(unsigned long& step);
    // What creating commands share, see vexcreation.h, and the ways to an arc.
    template <class Entity, class Tracker>
    class Creation;
    /// Makes a new entity the last one made. False, with a refusal, for one that numbers beyond all
    /// measure have given no place in a drawing.
    bool acceptMade(CVexDbEntity& entity);
    class ArcDialogue;
    class PolylineDialogue;
    /// A plain point; false for a cancel or a loss.
    bool askPoint(int prompt, CVexGePoint2d& point);
    bool askPolygon(CVexGePoint2d& point, unsigned long& step);
    // What changes the drawing by itself gives null.
    CVexDbEntity* CommandErase(unsigned long& step);
    CVexDbEntity* CommandMove(unsigned long& step);
    CVexDbEntity* CommandCopy(unsigned long& step);
    CVexDbEntity* CommandRotate(unsigned long& step);
    CVexDbEntity* CommandCopyRotate(unsigned long& step);
    CVexDbEntity* CommandScale(unsigned long& step);
    CVexDbEntity* CommandMirror(unsigned long& step);
    CVexDbEntity* CommandTrim(unsigned long& step);
    CVexDbEntity* CommandExtend(unsigned long& step);
    CVexDbEntity* CommandExplode(unsigned long& step);
    CVexDbEntity* CommandPolylineedit(unsigned long& step);
    class PolylineEdit;
    // What these share.
    class Transform;
    /// The selection, or what is picked now when there is none; false for nothing to work on.
    bool askSet(VexEntitySet& entities);
    /// The same for a command that ends its entities: the selection is dropped.
    bool takeSet(VexEntitySet& entities);
    /// In what trim and extend differ.
    struct CutRule;
    void cutAtBoundaries(const CutRule& rule);
    [[nodiscard]] std::vector<std::unique_ptr<CVexDbEntity>> askBoundaries(const CutRule& rule);
    bool cutOne(const CutRule& rule, CVexDbEntity& entity, CVexGePoint2d& pick,
                std::vector<CVexDbEntity*>& boundaries);

    [[nodiscard]] CWnd* historyWindow() const;
    [[nodiscard]] CString promptText(int id) const;
    void showLine(const CString& text);
    void appendToHistory(const CString& text);
    void writeHistory(const CString& text);
    void endLine();
    bool fitsPrompt() const;
    bool cancelLine(const CString& line);
    bool answerUnknown(const CString& name);
    [[nodiscard]] CDC* viewContext() const;
    [[nodiscard]] bool canAsk() const;
    /// Shows a prompt, unless the input is lost, and tells whether an answer may be waited for.
    bool askBy(int prompt);
    /// Runs a tracker with a band from `start` under a prompt.
    int trackFrom(CVexDbEntityTracker& tracker, const CVexGePoint2d& start, int prompt);
    int measure(int prompt, const CVexGePoint2d* base, CVexGePoint2d& from);
    [[nodiscard]] double distanceOf(int result, const CVexGePoint2d& from,
                                    CVexGePoint2d& end) const;
    void keepResult(int result, const Return_Struct& record);
    [[nodiscard]] double typedNumber(int result) const;
    void dropTracker(CVexDbEntityTracker& tracker);
    void retireTracker(CVexDbEntityTracker* tracker);
    void freeAbandoned();

    VexTrackerList m_trackers; // parallel to m_selected but for its order
    std::vector<CVexDbEntityTracker*> m_abandoned;
    VexEntitySet m_selected;
    bool m_blipDrawn = false;
    VexModifier m_modifier = VexModifier::kNone;
    CString m_inputText;
    VexCursor m_selectionCursor = VexCursor::kPickBox;
    VexCursor m_crossCursor = VexCursor::kCross;
    CVexPromptHandler* m_prompts;
    CWnd* m_message = nullptr;
    CWnd* m_display = nullptr;
    CVexDbDatabase* m_database;
    Return_Struct m_result;
    std::wstring m_resultText; // what a text in m_result points at
    CVexDbEntity* m_lastEntity = nullptr;
    int m_currentPrompt = 0;
    CWnd* m_history = nullptr;
    CString m_historyText;
    std::map<CString, unsigned long> m_commands; // by upper-case name
    int m_commandCount = 0;
    unsigned long m_lastCommand = 0;
    int m_busy = 0;
    bool m_inputLost = false;
    bool m_quitKept = false;
    unsigned long m_inputSerial = 0;
    unsigned long m_refusals = 0;
    bool m_answerTaken = false;
};

/// Marks a blocking call for as long as it lives.
class VexBusyScope {
public:
    explicit VexBusyScope(CVexCommandHandler& handler) : m_handler(handler) { m_handler.enter(); }
    ~VexBusyScope() { m_handler.leave(); }
    VexBusyScope(const VexBusyScope&) = delete;
    VexBusyScope& operator=(const VexBusyScope&) = delete;

private:
    CVexCommandHandler& m_handler;
};
