#pragma once

#include "tests/session/sessionfixture.h"
#include "tests/vexdb/polylinewords.h"

#include <string>
#include <vector>

/// A session that is driven by lines of a script.
class ScriptedTest : public SessionTest {
public:
    /// Every line is taken, and nothing waits behind the last one.
    void plays(std::vector<CString> script)
    {
        CVexScriptPlayer player(*session);
        EXPECT_TRUE(player.play(std::move(script)));
        for (const CVexScriptPlayer::Refusal& refusal : player.refusals()) {
            ADD_FAILURE() << refusal.line << ": " << refusal.text.utf8() << ": "
                          << refusal.why.utf8();
        }
        EXPECT_FALSE(handler().isBusy());
    }
    /// Why the one line of the script that is refused is.
    std::wstring refusalOf(std::vector<CString> script)
    {
        CVexScriptPlayer player(*session);
        player.play(std::move(script));
        return player.refusals().size() == 1 ? player.refusals().front().why.str() : L"";
    }
    /// What can be seen, the oldest first; what is no polyline as the number of its class.
    std::vector<std::string> seen()
    {
        std::vector<std::string> words;
        for (const CVexDbObjectId& id : *view().displayedIdSet()) {
            const CVexDbObject* const object = id.getPObject();
            if (object->isVisiable()) {
                words.push_back(object->classType() == VexDb::kPolyline
                                    ? wordsOf(static_cast<const CVexDbPolyline&>(*object))
                                    : std::to_string(object->classType()));
            }
        }
        return words;
    }
};
