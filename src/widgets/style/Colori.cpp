#include "widgets/style/Colori.h"

namespace lapvane {

namespace {

QColor C(QRgb rgb) {
    return QColor(rgb);
}

ColoreGiro Bianco(char lettera, QRgb rgb) {
    return {lettera, C(rgb), C(0xFFFFFF)};
}

ColoreGiro Nero(char lettera, QRgb rgb) {
    return {lettera, C(rgb), C(0x000000)};
}

Colori Chiari() {
    return {.Window = C(0xECEFF3),
            .Bar = C(0xF7F8FA),
            .Base = C(0xFFFFFF),
            .Alt = C(0xF5F7F9),
            .Raised = C(0xFFFFFF),
            .Line = C(0xCDD3DB),
            .Edge = C(0x798391),
            .Grid = C(0xE3E7EC),
            .Text = C(0x171C24),
            .Text2 = C(0x4D5866),
            .Stale = C(0x66707E),
            .Off = C(0x8D96A3),
            .Accent = C(0x0F5FBF),
            .AccentText = C(0xFFFFFF),
            .Sel = C(0x0F5FBF),
            .SelText = C(0xFFFFFF),
            .SelSoft = C(0xDCE9F8),
            .Gain = C(0x0A6A7E),
            .GainSoft = C(0xD8EEF2),
            .Loss = C(0xB03A0A),
            .LossSoft = C(0xFBE3D8),
            .Ok = C(0x157347),
            .Warn = C(0x8A5A00),
            .WarnSoft = C(0xFFF3D6),
            .Err = C(0xB42318),
            .ErrSoft = C(0xFDE7E4),
            .Tip = C(0x171C24),
            .TipText = C(0xF2F4F7),
            .Plot = C(0xFFFFFF),
            .Giri = {Bianco('R', 0x171C24), Bianco('A', 0x4560F1), Nero('B', 0xC8881B),
                     Bianco('C', 0x0D7036), Bianco('D', 0xC4497E), Bianco('E', 0x541F89),
                     Nero('F', 0x43A0B9)},
            .Gradazione = {C(0x14336E), C(0x7E8288), C(0xF2C40F)}};
}

Colori Scuri() {
    return {
        .Window = C(0x14181D),
        .Bar = C(0x1A1F26),
        .Base = C(0x1C2229),
        .Alt = C(0x212831),
        .Raised = C(0x262E38),
        .Line = C(0x343E4A),
        .Edge = C(0x74808F),
        .Grid = C(0x29313B),
        .Text = C(0xE9EDF2),
        .Text2 = C(0xA7B2C0),
        .Stale = C(0x8B97A6),
        .Off = C(0x6A7685),
        .Accent = C(0x6FB1FF),
        .AccentText = C(0x0B1420),
        .Sel = C(0x2A6CC4),
        .SelText = C(0xFFFFFF),
        .SelSoft = C(0x1E3350),
        .Gain = C(0x3CC3D9),
        .GainSoft = C(0x123A42),
        .Loss = C(0xFF8A4C),
        .LossSoft = C(0x4A2414),
        .Ok = C(0x4CC38A),
        .Warn = C(0xF2B84B),
        .WarnSoft = C(0x3B2E12),
        .Err = C(0xFF8A80),
        .ErrSoft = C(0x46201D),
        .Tip = C(0xE9EDF2),
        .TipText = C(0x14181D),
        .Plot = C(0x14181D),
        .Giri = {Nero('R', 0xE9EDF2), Nero('A', 0xA8C8F4), Nero('B', 0xAF911E), Nero('C', 0x73E69A),
                 Nero('D', 0xE9257E), Nero('E', 0x8965EF), Nero('F', 0x459AA4)},
        .Gradazione = {C(0x3C5DA8), C(0x8F9299), C(0xFFE45C)}};
}

/// Harder edges and black on a duller ground: what is left of a screen in the sun.
Colori DaBox() {
    Colori c = Chiari();
    c.Window = C(0xE4E8ED);
    c.Edge = C(0x4D5866);
    c.Text = C(0x000000);
    c.Text2 = C(0x333C47);
    c.Line = C(0x9AA4B1);
    return c;
}

}  // namespace

const Colori& ColoriDi(Tema tema) {
    static const Colori chiari = Chiari();
    static const Colori scuri = Scuri();
    static const Colori daBox = DaBox();
    return tema == Tema::Scuro ? scuri : tema == Tema::Box ? daBox : chiari;
}

}  // namespace lapvane
