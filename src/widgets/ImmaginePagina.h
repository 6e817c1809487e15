#pragma once

#include <QImage>
#include <QWidget>
#include <filesystem>

namespace lapvane {

/// The picture of a display page in one of two sizes: that of the display, 128 by 64, or large, 316
/// by 158. The picture fills the size; its dots stay sharp at every scale of the screen.
class ImmaginePagina : public QWidget {
    Q_OBJECT
 public:
    static constexpr QSize kNaturale{128, 64};
    static constexpr QSize kGrande{316, 158};

    explicit ImmaginePagina(QWidget* parent = nullptr);

    /// A null picture shows `assente` in its place.
    void Mostra(const QImage& immagine, const QString& assente);
    void Grande(bool grande);
    const QImage& Immagine() const { return immagine_; }

    /// Reads a picture file, at most 16 million pixels; null for what is missing, larger or no
    /// picture.
    static QImage Carica(const std::filesystem::path& file);
    /// The picture stretched to `misura`: whole dots where they fit a whole number of times, evenly
    /// wide dots with a seam of one pixel at most otherwise.
    static QImage Adatta(const QImage& immagine, const QSize& misura);

 protected:
    void paintEvent(QPaintEvent* evento) override;

 private:
    QImage immagine_;
    QImage disegnata_;
    QString assente_;
};

}  // namespace lapvane
