#include "host/vextool/commands.h"
#include "host/vextool/drawinginfo.h"
#include "host/vextool/drawingio.h"
#include "host/vextool/drawingjson.h"

#include <iostream>

ExitCode runInfo(const Options& options)
{
    ToolMachine machine(options.quiet);
    const CVexMachineScope scope(machine);
    const LoadedDrawing drawing = loadDrawing(options.input, options.quiet);
    if (drawing.database) {
        const JsonObject info = drawingInfo(*drawing.database);
        std::cout << (options.json ? jsonText(info, 2) + "\n" : infoText(info));
    }
    return drawing.code;
}

ExitCode runDump(const Options& options)
{
    ToolMachine machine(options.quiet);
    const CVexMachineScope scope(machine);
    const LoadedDrawing drawing = loadDrawing(options.input, options.quiet);
    if (drawing.database) {
        writeObjects(*drawing.database,
                     [](const JsonObject& object) { std::cout << jsonText(object) << '\n'; });
    }
    return drawing.code;
}

ExitCode runCheck(const Options& options)
{
    ToolMachine machine(true); // the faults come as a list below, not as a message
    const CVexMachineScope scope(machine);
    const LoadedDrawing drawing = loadDrawing(options.input, options.quiet);
    if (!drawing.database) {
        return drawing.code;
    }
    const VexDbLoadReport& report = drawing.database->lastReport();
    for (const VexDbFault& fault : report.faults) {
        std::cout << options.input << ": byte " << fault.offset << ": " << fault.what.utf8()
                  << '\n';
    }
    const std::vector<CString> broken = drawing.database->selfCheck();
    for (const CString& what : broken) {
        std::cout << options.input << ": " << what.utf8() << '\n';
    }
    if (!drawing.hasSignature) {
        std::cout << options.input << ": byte 0: the signature is not \"Z-Ply\"\n";
    }
    const bool whole = drawing.code == kExitGood && report.faultCount == 0 && broken.empty() &&
                       drawing.hasSignature;
    std::cout << options.input << ": " << (whole ? "whole" : "has faults") << ", "
              << report.objectsKept << " objects read\n";
    return whole ? kExitGood : kExitFaults;
}
