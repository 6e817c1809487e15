#include "platform/qt/QtPlatform.h"

#include <QAbstractEventDispatcher>
#include <QApplication>
#include <QColorDialog>
#include <QDateTime>
#include <QDesktopServices>
#include <QDir>
#include <QEventLoop>
#include <QFileDialog>
#include <QFileIconProvider>
#include <QFileInfo>
#include <QHeaderView>
#include <QLibraryInfo>
#include <QListView>
#include <QLocale>
#include <QMessageBox>
#include <QPushButton>
#include <QScreen>
#include <QStandardPaths>
#include <QStyle>
#include <QTimer>
#include <QTreeView>
#include <QUrl>
#include <chrono>
#include <cstdlib>

#include "platform/CartellaProgramma.h"
#include "platform/Sonno.h"
#include "platform/qt/ConversioniQt.h"
#include "platform/qt/TestoQt.h"

namespace lapvane {

namespace {

QMessageBox::Icon BoxIcon(Icon icon) {
    switch (icon) {
        case Icon::None:
            return QMessageBox::NoIcon;
        case Icon::Information:
            return QMessageBox::Information;
        case Icon::Warning:
            return QMessageBox::Warning;
        case Icon::Critical:
            return QMessageBox::Critical;
        case Icon::Question:
            return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

/// "Project File (*.pro)|*.pro" as Qt writes it: "Project File (*.pro)".
QString FilterInQt(const std::string& filter) {
    const QStringList parts = InQt(filter).split(QLatin1Char('|'));
    const QString& name = parts.value(0);
    const QString pattern = parts.value(1);
    if (pattern.isEmpty() || name.contains(pattern)) return name;
    return name + QStringLiteral(" (") + pattern + QLatin1Char(')');
}

/// A message whose words of any length, such as paths, can be broken into lines.
QString Breakable(const QString& text) {
    constexpr int kLongest = 60;
    QString broken;
    int length = 0;
    for (const QChar c : text) {
        length = c.isSpace() ? 0 : length + 1;
        broken += c;
        if (length % kLongest == 0 && length > 0) broken += QChar(0x200B);
    }
    return broken;
}

/// The window over which a box or a dialog of the program stands; null at the start.
QWidget* WindowBelow() {
    // The splash goes as soon as something else has the keyboard: nothing stands over it.
    const auto stays = [](const QWidget* window) {
        return window != nullptr && window->isVisible() &&
               !window->windowFlags().testFlag(Qt::FramelessWindowHint);
    };
    if (stays(QApplication::activeWindow())) return QApplication::activeWindow();
    // Another program may be in front.
    if (stays(QApplication::activeModalWidget())) return QApplication::activeModalWidget();
    for (QWidget* window : QApplication::topLevelWidgets()) {
        if (stays(window) && window->windowType() == Qt::Window) return window;
    }
    return nullptr;
}

/// Without a window below it stands in the middle of the screen.
void PlaceAlone(QDialog& dialog) {
    if (dialog.parentWidget() != nullptr || dialog.screen() == nullptr) return;
    dialog.adjustSize();
    dialog.move(dialog.screen()->availableGeometry().center() - dialog.rect().center());
}

/// The style's drawings, not those of the desktop's own set.
class FileIcons : public QFileIconProvider {
 public:
    using QFileIconProvider::icon;
    QIcon icon(const QFileInfo& file) const override {
        return QApplication::style()->standardIcon(file.isRoot()  ? QStyle::SP_DriveHDIcon
                                                   : file.isDir() ? QStyle::SP_DirIcon
                                                                  : QStyle::SP_FileIcon);
    }
};

/// A file dialog that takes no name in a folder that is not there.
class FileDialog : public QFileDialog {
 public:
    using QFileDialog::QFileDialog;

    /// Tells so if the folder of a file is not there.
    bool Refuses(const QString& file) {
        if (QFileInfo(QFileInfo(file).absolutePath()).isDir()) return false;
        QMessageBox::warning(
            this, windowTitle(),
            QFileDialog::tr(
                "%1\nDirectory not found.\nPlease verify the correct directory name was "
                "given.")
                .arg(QDir::toNativeSeparators(QFileInfo(file).absolutePath())));
        return true;
    }

 protected:
    void accept() override {
        const QStringList files = selectedFiles();
        if (acceptMode() == AcceptSave && files.size() == 1 && Refuses(files.constFirst())) return;
        QFileDialog::accept();
    }
};

/// Columns and places of the toolkit's file dialog as wide as their words; the desktop's own
/// dialogs have none.
void ShowWhole(QFileDialog& dialog) {
    constexpr int kLetters = 120;  // across the window: the names have half of it
    const QSize wide(kLetters * dialog.fontMetrics().averageCharWidth(), dialog.height());
    const QSize free = dialog.screen() ? dialog.screen()->availableSize() : wide;
    dialog.resize(wide.expandedTo(dialog.size()).boundedTo(free));
    if (auto* files = dialog.findChild<QTreeView*>(QStringLiteral("treeView"))) {
        files->header()->setSectionResizeMode(QHeaderView::ResizeToContents);
        files->header()->setSectionResizeMode(0, QHeaderView::Stretch);
    }
    if (auto* places = dialog.findChild<QListView*>(QStringLiteral("sidebar"))) {
        places->setMinimumWidth(places->sizeHintForColumn(0) + 2 * places->frameWidth());
    }
}

}  // namespace

QString FormatoGenerale(const QDateTime& quando, const QLocale& paese) {
    QString data = paese.dateFormat(QLocale::ShortFormat);
    if (!data.contains(QLatin1String("yyyy"))) {
        data.replace(QLatin1String("yy"), QLatin1String("yyyy"));
    }
    // The long format of the time is the one with seconds; the zone is none of the general format.
    QString ora = paese.timeFormat(QLocale::LongFormat).remove(QLatin1Char('t'));
    QString testo = paese.toString(quando.date(), data) + QLatin1Char(' ') +
                    paese.toString(quando.time(), ora.trimmed());
    // Some locales set a blank that no code page has before AM and PM.
    for (const char16_t blank : {u'\u00A0', u'\u202F'}) testo.replace(QChar(blank), u' ');
    return testo.simplified();
}

QtPlatform::QtPlatform() {
    clock_.start();
    const bool loaded = italian_.load(QStringLiteral("qtbase_it"),
                                      QLibraryInfo::path(QLibraryInfo::TranslationsPath));
    if (!loaded) qWarning("the Italian texts of Qt's own dialogs are not installed");
}

bool QtPlatform::OpenOutside(const std::filesystem::path& what, const std::string& place) {
    // A browser in a box of its own sees /usr/share/doc, but not the links that lead there.
    const QString there = QFileInfo(PercorsoInQt(what)).canonicalFilePath();
    QUrl url = QUrl::fromLocalFile(there.isEmpty() ? PercorsoInQt(what) : there);
    url.setFragment(QString::fromStdString(place));
    return QDesktopServices::openUrl(url);
}

std::int64_t QtPlatform::GetTickCount() {
    return clock_.elapsed();
}

void QtPlatform::Sleep(int ms) {
    Pause(ms, [] {});
}

void QtPlatform::Pause(int ms, const std::function<void()>& meanwhile) {
    // A system wakes a sleeper late, which a download would pay for each block: the end of the
    // pause is waited for awake.
    using Clock = std::chrono::steady_clock;
    constexpr std::chrono::microseconds kLate(250);
    const auto end = Clock::now() + std::chrono::milliseconds(ms);
    meanwhile();
    DormiFino(end - kLate);
    while (Clock::now() < end) {
    }
}

void QtPlatform::DoEvents(int waitMs) {
    QEventLoop loop;
    if (waitMs > 0) {
        // A timer of our own bounds the sleep inside the machine's poll; anything else that
        // happens ends it earlier.
        QTimer bound;
        bound.setTimerType(Qt::PreciseTimer);
        bound.setSingleShot(true);
        bound.start(waitMs);
        loop.processEvents(QEventLoop::AllEvents | QEventLoop::WaitForMoreEvents);
    }
    loop.processEvents(QEventLoop::AllEvents);
    QCoreApplication::sendPostedEvents(nullptr, QEvent::DeferredDelete);
}

Answer QtPlatform::MsgBox(const std::string& text, Buttons buttons, Icon icon,
                          const std::string& title) {
    QMessageBox box(WindowBelow());
    box.setIcon(BoxIcon(icon));
    box.setWindowTitle(InQt(title));
    box.setTextFormat(Qt::PlainText);
    box.setText(Breakable(InQt(text).replace(QStringLiteral("\r\n"), QStringLiteral("\n"))));
    switch (buttons) {
        case Buttons::Ok:
            box.setStandardButtons(QMessageBox::Ok);
            break;
        case Buttons::OkCancel:
            box.setStandardButtons(QMessageBox::Ok | QMessageBox::Cancel);
            box.setDefaultButton(QMessageBox::Ok);
            break;
        case Buttons::YesNoCancel:
            box.setStandardButtons(QMessageBox::Yes | QMessageBox::No | QMessageBox::Cancel);
            box.setDefaultButton(QMessageBox::Yes);
            break;
    }
    // A box that reports the end of long work must not sit under the busy pointer.
    PlaceAlone(box);
    const bool wasBusy = busy_;
    MousePointer(Pointer::Normal);
    const int answer = box.exec();
    if (wasBusy) MousePointer(Pointer::Busy);
    switch (answer) {
        case QMessageBox::Yes:
            return Answer::Yes;
        case QMessageBox::No:
            return Answer::No;
        case QMessageBox::Ok:
            return Answer::Ok;
        default:
            return buttons == Buttons::Ok ? Answer::Ok : Answer::Cancel;
    }
}

std::optional<std::filesystem::path> QtPlatform::AskFile(const FileRequest& request, bool save) {
    FileIcons icons;  // outlives the dialog, which does not own it
    FileDialog dialog(WindowBelow(), InQt(request.Title));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setIconProvider(&icons);
    dialog.setAcceptMode(save ? QFileDialog::AcceptSave : QFileDialog::AcceptOpen);
    dialog.setFileMode(save ? QFileDialog::AnyFile : QFileDialog::ExistingFile);
    dialog.setNameFilter(FilterInQt(request.Filter));
    if (!request.Folder.empty()) dialog.setDirectory(PercorsoInQt(request.Folder));
    if (!request.Name.empty()) dialog.selectFile(PercorsoInQt(request.Name));
    ShowWhole(dialog);
    // The program asks its own question before it replaces a file.
    dialog.setOption(QFileDialog::DontConfirmOverwrite, true);
    QString chosen;
    do {
        if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) {
            return std::nullopt;
        }
        chosen = dialog.selectedFiles().constFirst();
        // A dialog of the desktop's own has not asked.
    } while (save && dialog.Refuses(chosen));
    const QString required = InQt(request.RequiredExtension);
    if (save && !required.isEmpty() && !chosen.endsWith(required, Qt::CaseInsensitive)) {
        chosen += required;
    }
    QDir::setCurrent(QFileInfo(chosen).absolutePath());
    return PercorsoDaQt(chosen);
}

std::optional<std::filesystem::path> QtPlatform::AskOpen(const FileRequest& request) {
    return AskFile(request, false);
}

std::optional<std::filesystem::path> QtPlatform::AskSave(const FileRequest& request) {
    return AskFile(request, true);
}

std::optional<std::filesystem::path> QtPlatform::AskFolder(const std::string& title,
                                                           const std::filesystem::path& initial) {
    QFileDialog dialog(WindowBelow(), InQt(title));
    dialog.setObjectName(QStringLiteral("CommonDialog1"));
    dialog.setFileMode(QFileDialog::Directory);
    // Files show, so that one sees whether it is the right folder.
    dialog.setOption(QFileDialog::ShowDirsOnly, false);
    if (!initial.empty()) dialog.setDirectory(PercorsoInQt(initial));
    if (dialog.exec() != QDialog::Accepted || dialog.selectedFiles().isEmpty()) return std::nullopt;
    return PercorsoDaQt(dialog.selectedFiles().constFirst());
}

std::optional<Colore> QtPlatform::AskColor(Colore initial) {
    const QColor chosen = QColorDialog::getColor(InQColor(initial), WindowBelow());
    if (!chosen.isValid()) return std::nullopt;
    return DaQColor(chosen);
}

std::filesystem::path QtPlatform::AppPath() {
    if (appPath_.empty()) {
        const QString data = QStandardPaths::writableLocation(QStandardPaths::GenericDataLocation);
        appPath_ =
            CartellaDelProgramma(InstallPath(), data.isEmpty() ? std::filesystem::path()
                                                               : PercorsoDaQt(data) / "Lapvane");
    }
    return appPath_;
}

std::filesystem::path QtPlatform::InstallPath() {
    return PercorsoDaQt(QCoreApplication::applicationDirPath());
}

std::filesystem::path QtPlatform::Documents() {
    return PercorsoDaQt(QStandardPaths::writableLocation(QStandardPaths::DocumentsLocation));
}

std::filesystem::path QtPlatform::CurDir() {
    return PercorsoDaQt(QDir::currentPath());
}

void QtPlatform::ChDir(const std::filesystem::path& folder) {
    QDir::setCurrent(PercorsoInQt(folder));
}

std::string QtPlatform::ExeName() {
    return DaQt(QFileInfo(QCoreApplication::applicationFilePath()).completeBaseName());
}

std::string QtPlatform::Now() {
    return DaQt(FormatoGenerale(QDateTime::currentDateTime(), QLocale::system()));
}

char QtPlatform::DecimalSeparator() {
    const std::string point = DaQt(QLocale::system().decimalPoint());
    return point == "," ? ',' : '.';
}

void QtPlatform::MousePointer(Pointer pointer) {
    const bool busy = pointer == Pointer::Busy;
    if (busy == busy_) return;
    busy_ = busy;
    if (busy) {
        QGuiApplication::setOverrideCursor(Qt::WaitCursor);
    } else {
        QGuiApplication::restoreOverrideCursor();
    }
}

void QtPlatform::Language(int index) {
    const bool italian = index == 0;
    if (italian == italianOn_) return;
    italianOn_ = italian;
    if (italian) {
        QCoreApplication::installTranslator(&italian_);
    } else {
        QCoreApplication::removeTranslator(&italian_);
    }
}

void QtPlatform::End(int code) {
    std::fflush(nullptr);
    // Not exit(): the windows on the stack below are still in use by the events that led here.
    std::_Exit(code);
}

}  // namespace lapvane
