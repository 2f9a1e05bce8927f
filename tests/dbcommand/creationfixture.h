#pragma once

#include "commandfixture.h"
#include "vexdb/dbcommand/vexundohandler.h"

#include <memory>

/// Runs a creating command to its end over what the user has queued.
class CreationTest : public CommandTest {
protected:
    /// What the command made, the test's own; null when it made nothing.
    template <class Entity>
    std::unique_ptr<Entity> make(VexDb::CommandID id, unsigned long& step)
    {
        return std::unique_ptr<Entity>(static_cast<Entity*>(handler().DoCommand(id, step)));
    }
    template <class Entity>
    std::unique_ptr<Entity> make(VexDb::CommandID id)
    {
        unsigned long step = 0;
        return make<Entity>(id, step);
    }
};
