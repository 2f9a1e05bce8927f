#pragma once

#include "platform/base/cstring.h"
#include "platform/base/vexexport.h"
#include "platform/window/vexbackend.h"
#include "platform/window/vexmessage.h"

#include <cstddef>
#include <deque>
#include <functional>
#include <memory>
#include <vector>

class CVexCommandHandler;
class CVexCommandSession;

/// Plays what a person would type, line by line, into a session.
///
/// A line is typed and closed with Enter, an empty one is Enter alone. A blank closes an answer
/// too, so "LINE 0,0 5<90" is three answers. What an input takes as a keyword is not closed. Blanks
/// at the ends of a line do not count, and a line that begins with ';' is a comment. What mouse and
/// keys do stands behind an '@':
///   @click x,y    @rclick x,y    @move x,y     a position in drawing units
///   @press x,y    @release x,y                 the two halves of a drag
///   @key Escape   @key F4   @key Left ...      a key by its name, or a letter
///   @menu x,y ROW   @menu x,y ROW = TEXT       a row of the popup menu of the grip there, and what
///                                              the question behind it is answered
/// and what a program's panels offer beside them:
///   @layer NAME                                what comes goes onto that layer
///
/// Keys and mouse go to the display window as messages, one at a time, each followed by a
/// WM_VEX_FEED that asks for the next. So a script plays on any backend that delivers in order.
class VEXDB_EXPORT CVexScriptPlayer {
public:
    /// A line that was refused, with its number from 1 and why.
    struct Refusal {
        int line = 0;
        CString text;
        CString why;
    };

    /// A session that ends before the script does takes the rest of it along.
    explicit CVexScriptPlayer(CVexCommandSession& session);
    ~CVexScriptPlayer();
    CVexScriptPlayer(const CVexScriptPlayer&) = delete;
    CVexScriptPlayer& operator=(const CVexScriptPlayer&) = delete;

    /// Goes on behind a refused line.
    void setKeepGoing(bool keepGoing) { m_keepGoing = keepGoing; }
    /// Called with each line of the history as it is made.
    void setEcho(std::function<void(const CString&)> echo) { m_echo = std::move(echo); }
    /// The lines of a text file; false when it cannot be read.
    static bool readLines(const CString& path, std::vector<CString>& lines);

    /// Plays by itself from here on, while the program's own loop runs; `whenOver` is called at the
    /// end, and may end this player.
    void start(std::vector<CString> lines, std::function<void()> whenOver = {});
    [[nodiscard]] bool isOver() const { return m_over || m_sessionAlive.expired(); }

    // For a backend that never waits: these run its loop until the script is over.
    /// False when the file cannot be read, or a line was refused.
    bool playFile(const CString& path);
    /// True when no line was refused. A command still waiting at the end is cancelled.
    bool play(std::vector<CString> lines);

    [[nodiscard]] const std::vector<Refusal>& refusals() const { return m_refusals; }

private:
    /// One message of a line.
    struct Step {
        unsigned message = 0;
        WPARAM wParam = 0;
        LPARAM lParam = 0;
    };
    /// What can be seen before an answer, or a key, to tell afterwards what became of it.
    struct Mark {
        unsigned long inputs = 0;
        unsigned long refusals = 0;
        std::size_t boxes = 0;
        bool busy = false;
    };

    void feed();
    bool stepOn();
    bool finishAnswer();
    bool nextAnswer();
    void beginWord(const CString& word);
    bool beginLine(const CString& line);
    bool beginAction(const CString& line);
    bool setLayer(const CString& name);
    bool beginMouse(const CString& name, const CString& arguments);
    bool beginMenu(const CString& arguments);
    void dropMenu();
    bool beginKey(const CString& name);
    void addKey(unsigned key, wchar_t character);
    void post(const Step& step);
    [[nodiscard]] CString faultOfAnswer() const;
    [[nodiscard]] bool inputWentOn(const Mark& since) const;
    [[nodiscard]] Mark look() const;
    void refuse(const CString& why);
    void echo();
    void end();
    [[nodiscard]] CVexCommandHandler& handler() const;

    CVexCommandSession& m_session;
    std::weak_ptr<const bool> m_sessionAlive;
    bool m_keepGoing = false;
    bool m_over = true;
    std::function<void(const CString&)> m_echo;
    std::function<void()> m_whenOver;
    std::shared_ptr<bool> m_alive = std::make_shared<bool>(true);
    std::vector<CString> m_lines;
    std::size_t m_next = 0;      // the line that comes next
    std::deque<CString> m_words; // of the line, not yet typed
    std::deque<Step> m_steps;    // of the answer, not yet sent
    CString m_word;              // the answer that is being typed
    bool m_answering = false;
    bool m_typed = false;        // a word, not an action
    bool m_wantsClosing = false; // Enter or a blank comes when the word is typed
    VexScriptedMenu m_menu;      // of @menu
    bool m_menuWaits = false;
    Mark m_answerMark;
    Mark m_keyMark;
    CString m_history; // as it was echoed
    std::vector<Refusal> m_refusals;
};
