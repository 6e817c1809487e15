#pragma once

#include <string_view>

namespace lapvane::bench {

/// A path on which a person waits, and how long it may take.
struct Limit {
    std::string_view Program;    ///< bench program that measures it
    std::string_view Path;       ///< as the table calls it
    std::string_view Run;        ///< the benchmark's name ...
    std::string_view Figure;     ///< ... and its counter; empty: its time in ms
    std::string_view Yardstick;  ///< benchmark whose time is the unit; empty: none
    double Most;
    std::string_view Unit;
};

/// Every limit there is, set where a machine with two slow cores can just come to: one that is not
/// met is told. A redraw has to leave most of a frame of a 60 Hz screen to everything else that a
/// step of the scroll does. "Bare" readers and writers know the log beforehand and do nothing else
/// (BareRead.h, ConversioneBench.cpp). Highest, lowest and mean value are three passes over a
/// column: they may take as long as three plain reads.
inline constexpr Limit kLimits[] = {
    {"window", "redraw 16 x 500 points, smooth", "Redraw/Smooth", "graph_ms", "", 2.2, "ms"},
    {"window", "redraw, channels of the sample", "Redraw/Real", "graph_ms", "", 2.2, "ms"},
    {"window", "redraw, 3 % noise", "Redraw/Noisy3Percent", "graph_ms", "", 3, "ms"},
    {"window", "redraw, 10 % noise", "Redraw/Noisy10Percent", "graph_ms", "", 5, "ms"},
    {"window", "redraw, 30 % noise", "Redraw/Noisy30Percent", "graph_ms", "", 7, "ms"},
    {"window", "redraw, 3 % noise, beside QPainter", "Redraw/Noisy3Percent", "ratio", "", 1.5,
     "x bare lines"},
    {"window", "redraw on 3200 x 1800, smooth", "RedrawDouble/Smooth", "graph_ms", "", 5, "ms"},
    {"window", "the same, 3 % noise", "RedrawDouble/Noisy3Percent", "graph_ms", "", 6, "ms"},
    {"window", "graph, step of a resize", "GraphResizeStep", "", "", 8, "ms"},
    {"window", "step of the scroll, 8 channels", "ScrollStep", "", "", 12, "ms"},
    {"window", "full log: open to first lap", "OpenLog", "ratio", "", 2, "x bare read"},
    {"window", "the same through its window", "OpenLogWindow", "ratio", "", 1.74, "x bare read"},
    {"window", "from one lap to another", "LapSwitch", "", "", 4, "ms"},
    {"window", "comparison, 7 laps in 4 panes", "RedrawPanes/700", "", "", 6, "ms"},
    {"window", "the same, laps of 6000 points", "RedrawPanes/6000", "", "", 6, "ms"},
    {"window", "the same on 3200 x 1800", "RedrawPanes/Large700", "", "", 12, "ms"},
    {"window", "comparison, move of the cursor", "PanesCursor", "", "", 2, "ms"},
    {"window", "two full logs compared, first picture, beyond their loads", "CompareOpen",
     "beyond_ms", "", 60, "ms"},
    {"window", "comparison, cursor with tables and map", "CompareCursor", "", "", 2, "ms"},
    {"window", "ground of the main window", "Ground/at_start", "", "", 0.5, "ms"},
    {"window", "the same on 1920 x 1080", "Ground/whole_screen", "", "", 0.5, "ms"},
    {"window", "main window, step of a resize", "ResizeStep", "", "", 8, "ms"},
    {"window", "report of 998 laps shown", "ShowReport", "", "", 100, "ms"},
    {"window", "report as PDF", "PrintReport", "", "", 1000, "ms"},
    {"logic", "full log: load", "LoadTable", "ratio", "", 1.15, "x bare read"},
    {"logic", "two full logs compared, beyond their loads", "OpenTwoLogs", "beyond_ms", "", 60,
     "ms"},
    {"logic", "three figures of the scales", "ScaleFigures", "", "One/PlainRead", 3,
     "x plain read"},
    {"logic", "conversion of a full memory", "ConversioneInMemoria", "ratio", "", 1.5,
     "x bare write"},
    {"logic", "the same onto the disk", "ConversioneSuDisco", "", "", 400, "ms"},
    {"logic", "10000 runs, first reading", "RunsFirst", "", "", 10000, "ms"},
    {"logic", "10000 runs, list from the index", "RunsAgain", "", "", 1000, "ms"},
    {"logic", "10000 runs, a key of the search", "RunsSearch", "key_ms", "", 50, "ms"},
    {"logic", "full log, ideal lap for the list", "RunsLog", "", "", 150, "ms"},
    {"logic", "20000 sensor files read", "LibreriaDi20000File", "", "", 400, "ms"},
    {"logic", "programming run, own time", "CorsaIntera/program", "", "", 50, "ms"},
    {"logic", "reading run, own time", "CorsaIntera/read", "", "", 50, "ms"},
    {"download", "download, own time a block", "SovraccaricoDelDownload", "", "", 0.15, "ms"},
    {"download", "the same beside a bare exchange", "SovraccaricoDelDownload", "ratio", "", 2,
     "x bare"},
    {"download", "a block with window and disk", "DownloadInFinestra", "", "", 0.2, "ms"},
    {"download", "live view, processor a cycle", "CicloDalVivo", "processor_ms", "", 5, "ms"},
    {"download", "idle, nobody connected", "Riposo/nobody_connected", "core_percent", "", 0.3,
     "% of a core"},
    {"download", "the same", "Riposo/nobody_connected", "wakeups", "", 15, "a second"},
    {"download", "idle, silent port", "Riposo/silent_instrument", "core_percent", "", 0.3,
     "% of a core"},
    {"download", "the same", "Riposo/silent_instrument", "wakeups", "", 15, "a second"},
    {"download", "idle, instrument connected", "Riposo/connected", "core_percent", "", 0.3,
     "% of a core"},
    {"download", "the same", "Riposo/connected", "wakeups", "", 25, "a second"},
    {"process", "start to main window, less splash", "StartUp", "", "", 35, "ms"},
    {"process", "memory, full log, array window", "Memory/array", "peak_MB", "", 80, "MB"},
    {"process", "memory, full log, sheet window", "Memory/sheet", "peak_MB", "", 80, "MB"},
    {"process", "a new program's first log, array", "Memory/array", "open_ms", "", 40, "ms"},
    {"process", "the same, sheet", "Memory/sheet", "open_ms", "", 40, "ms"},
    {"download on X", "on X: download, own time a block", "SovraccaricoDelDownload", "", "", 0.2,
     "ms"},
    {"download on X", "on X: with window and disk", "DownloadInFinestra", "", "", 0.2, "ms"},
    {"process on X", "on X: memory, array window", "Memory/array", "peak_MB", "", 80, "MB"},
    {"process on X", "on X: memory, sheet window", "Memory/sheet", "peak_MB", "", 80, "MB"},
};

}  // namespace lapvane::bench
