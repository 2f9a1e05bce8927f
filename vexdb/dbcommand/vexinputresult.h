#pragma once

/// What every input primitive and every tracker answers.
enum InputResult : int {
    InputLost = -1,         // the capture went; of a selection: nothing was selected
    InputCancel = 0,        // Escape, Ctrl+Break, right button, or nothing chosen
    InputPoint = 1,         // a click: the database's last point, or the caller's variable
    InputNumber = 3004,     // a typed number
    InputTypedPoint = 3005, // a typed point; the database's last point is it already
    InputKeyword = 3006,    // a key of the keyword list
    InputString = 3007,     // typed text that is neither number nor point
    InputEnter = 3008,      // Enter on an empty line, seen inside a tracker only
};

/// A point was clicked or typed.
constexpr bool isPlaced(int result)
{
    return result == InputPoint || result == InputTypedPoint;
}
