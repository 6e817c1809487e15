#pragma once

#include <QString>
#include <QWidget>
#include <cstdint>
#include <optional>
#include <vector>

class QPainter;

namespace lapvane {

/// One lap of the picture: the number that the lap table has for it and its hundredths of a second;
/// 0: it has no time.
struct TempoDisegnato {
    int Numero = 0;
    std::int32_t Centesimi = 0;
};

/// What lap times are drawn between, hundredths of a second. A lap above `Tetto` is cut there.
struct ScalaTempi {
    std::int32_t Pavimento = 0;
    std::int32_t Tetto = 0;
    std::vector<std::int32_t> Tacche;
};

/// A floor near the best lap and a roof that the usual laps reach: what is slower than the best by
/// more than four times what the middle lap is (at least 2 %) does not press the others down.
ScalaTempi CalcolaScalaTempi(const std::vector<TempoDisegnato>& giri);

/// The lap times of a run as sticks with heads: the best in colour with its time, those beyond the
/// scale cut and told by their time, the mean of the five best as a dashed line.
class DisegnoTempi : public QWidget {
    Q_OBJECT
 public:
    explicit DisegnoTempi(QWidget* parent = nullptr);

    /// `media` in hundredths, 0: there is none; `parole` what stands at its line. Without a lap
    /// that has a time only `invito` shows.
    void Imposta(std::vector<TempoDisegnato> giri, std::int32_t media, const QString& parole,
                 const QString& invito);
    const std::vector<TempoDisegnato>& Giri() const { return giri_; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

 protected:
    void paintEvent(QPaintEvent* evento) override;
    bool event(QEvent* evento) override;

 private:
    struct Posto {
        QRectF Area;  ///< between axis and roof
        double Passo = 0.0;
    };
    Posto Disponi() const;
    double X(const Posto& posto, std::size_t giro) const;
    double Y(const Posto& posto, std::int32_t centesimi) const;
    void DisegnaAsse(QPainter& penna, const Posto& posto) const;
    void DisegnaGiri(QPainter& penna, const Posto& posto) const;
    void DisegnaMedia(QPainter& penna, const Posto& posto) const;
    void DisegnaTempo(QPainter& penna, const Posto& posto, std::size_t giro) const;
    std::optional<std::size_t> GiroA(const QPointF& punto) const;

    std::vector<TempoDisegnato> giri_;
    ScalaTempi scala_;
    std::int32_t media_ = 0;
    std::int32_t migliore_ = 0;
    QString parole_;
    QString invito_;
};

}  // namespace lapvane
