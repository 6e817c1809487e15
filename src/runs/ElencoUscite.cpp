#include "runs/ElencoUscite.h"

#include <algorithm>
#include <array>
#include <map>
#include <numeric>
#include <unordered_map>

#include "platform/Testo1252.h"
#include "shell/LoadStrings.h"
#include "shell/NumeroTesto.h"

namespace lapvane {

namespace {

constexpr char kFineCampo = '\n';  // no word that somebody types reaches over it

/// What a letter of Windows-1252 is without case and accent, for codes 0x80 to 0xFF; empty: itself.
constexpr std::array<std::string_view, 128> kPiegate = [] {
    std::array<std::string_view, 128> tavola{};
    const auto metti = [&tavola](int da, int a, std::string_view lettera) {
        for (int c = da; c <= a; ++c) tavola[static_cast<std::size_t>(c - 0x80)] = lettera;
    };
    metti(0x83, 0x83, "f");
    metti(0x8A, 0x8A, "s");
    metti(0x8C, 0x8C, "oe");
    metti(0x8E, 0x8E, "z");
    metti(0x9A, 0x9A, "s");
    metti(0x9C, 0x9C, "oe");
    metti(0x9E, 0x9E, "z");
    metti(0x9F, 0x9F, "y");
    metti(0xDF, 0xDF, "ss");
    for (const int alto : {0xC0, 0xE0}) {  // capitals and small letters
        metti(alto, alto + 5, "a");
        metti(alto + 6, alto + 6, "ae");
        metti(alto + 7, alto + 7, "c");
        metti(alto + 8, alto + 11, "e");
        metti(alto + 12, alto + 15, "i");
        metti(alto + 16, alto + 16, "d");
        metti(alto + 17, alto + 17, "n");
        metti(alto + 18, alto + 22, "o");
        metti(alto + 24, alto + 24, "o");
        metti(alto + 25, alto + 28, "u");
        metti(alto + 29, alto + 29, "y");
        metti(alto + 30, alto + 30, "th");
    }
    metti(0xFF, 0xFF, "y");
    return tavola;
}();

/// Where the run stands in time; comparable, 0: not known.
std::int64_t Quando(const Uscita& u) {
    constexpr std::int64_t kMinuti = 1440;
    return u.Giorno <= 0 ? 0 : u.Giorno * kMinuti + std::max(u.Minuto, 0);
}

std::string Cercabile(const Uscita& u) {
    std::string testo;
    const auto campo = [&testo](const std::string& valore) {
        testo += valore;
        testo += kFineCampo;
    };
    campo(TestoData(u));
    campo(TestoOra(u));
    if (u.Giorno > 0) {
        const std::string anno = TestoNumero(int{u.Giorno / 10000});
        const std::string mese = DueCifre(u.Giorno / 100 % 100), giorno = DueCifre(u.Giorno % 100);
        campo(giorno + "/" + mese + "/" + anno);
        campo(anno + "-" + mese + "-" + giorno);
    }
    for (const std::string* uno : {&u.DataSessione, &u.OraSessione, &u.Circuito, &u.Sessione,
                                   &u.Piloti, &u.Veicolo, &u.Note}) {
        campo(*uno);
    }
    campo(TestoDaPercorso(u.Csv.filename()));
    return Piegato(testo);
}

/// What a column sorts by: a number, or a folded text; `Vuota` comes last.
struct Chiave {
    bool Vuota = true;
    std::int64_t Numero = 0;
    std::string Testo;
};

Chiave ChiaveDi(const Uscita& u, ColonnaUscite colonna) {
    const auto numero = [](std::int64_t n) { return Chiave{n <= 0, n, {}}; };
    const auto testo = [](const std::string& t) { return Chiave{t.empty(), 0, Piegato(t)}; };
    switch (colonna) {
        case ColonnaUscite::Data:
        case ColonnaUscite::Ora:
            return numero(Quando(u));
        case ColonnaUscite::Circuito:
            return testo(u.Circuito);
        case ColonnaUscite::Sessione:
            return testo(u.Sessione);
        case ColonnaUscite::Piloti:
            return testo(u.Piloti);
        case ColonnaUscite::Veicolo:
            return testo(u.Veicolo);
        case ColonnaUscite::Giri:
            return numero(u.Giri());
        case ColonnaUscite::Migliore:
            return numero(u.Migliore);
        case ColonnaUscite::Media:
            return numero(u.MediaCinque);
        case ColonnaUscite::Ideale:
            return numero(u.Ideale);
        case ColonnaUscite::Durata:
            return numero(u.Durata);
    }
    return {};
}

}  // namespace

Voce TitoloColonna(ColonnaUscite colonna) {
    static constexpr std::array<Voce, kColonneUscite> kTitoli = {
        Voce::UscitaData,   Voce::UscitaOra,     Voce::UscitaCircuito, Voce::UscitaSessione,
        Voce::UscitaPiloti, Voce::UscitaVeicolo, Voce::UscitaGiri,     Voce::UscitaMigliore,
        Voce::UscitaMedia,  Voce::UscitaIdeale,  Voce::UscitaDurata};
    return kTitoli[static_cast<std::size_t>(colonna)];
}

std::string TestoTempo(std::int32_t centesimi, char decimale) {
    if (centesimi <= 0) return {};
    constexpr std::int32_t kMinuto = 6000;
    const std::string fine = decimale + DueCifre(centesimi % 100);
    const std::int32_t secondi = centesimi / 100 % 60;
    if (centesimi < kMinuto) return TestoNumero(int{secondi}) + fine;
    return TestoNumero(int{centesimi / kMinuto}) + ":" + DueCifre(secondi) + fine;
}

std::string TestoDurata(std::int32_t decimi) {
    if (decimi <= 0) return {};
    const std::int32_t secondi = decimi / 10, ore = secondi / 3600;
    const std::string fine = ":" + DueCifre(secondi % 60);
    if (ore == 0) return TestoNumero(int{secondi / 60}) + fine;
    return TestoNumero(int{ore}) + ":" + DueCifre(secondi / 60 % 60) + fine;
}

bool SenzaNome(const Uscita& uscita) {
    return Rifila(uscita.Sessione).empty();
}

std::string TestoColonna(const Uscita& u, ColonnaUscite colonna, char decimale) {
    switch (colonna) {
        case ColonnaUscite::Data:
            return TestoData(u);
        case ColonnaUscite::Ora:
            return TestoOra(u);
        case ColonnaUscite::Circuito:
            return u.Circuito;
        case ColonnaUscite::Sessione:
            return SenzaNome(u) ? TestoDaPercorso(u.Csv.stem()) : u.Sessione;
        case ColonnaUscite::Piloti:
            return u.Piloti;
        case ColonnaUscite::Veicolo:
            return u.Veicolo;
        case ColonnaUscite::Giri:
            return u.Giri() == 0 ? std::string() : TestoNumero(u.Giri());
        case ColonnaUscite::Migliore:
            return TestoTempo(u.Migliore, decimale);
        case ColonnaUscite::Media:
            return TestoTempo(u.MediaCinque, decimale);
        case ColonnaUscite::Ideale:
            return TestoTempo(u.Ideale, decimale);
        case ColonnaUscite::Durata:
            return TestoDurata(u.Durata);
    }
    return {};
}

std::string Piegato(std::string_view testo) {
    std::string piegato;
    piegato.reserve(testo.size());
    for (const char c : testo) {
        const auto codice = static_cast<unsigned char>(c);
        if (codice < 0x80) {
            piegato += c >= 'A' && c <= 'Z' ? static_cast<char>(c + ('a' - 'A')) : c;
        } else if (const std::string_view lettera = kPiegate[codice - 0x80u]; lettera.empty()) {
            piegato += c;
        } else {
            piegato += lettera;
        }
    }
    return piegato;
}

void ElencoUscite::Prendi(const std::vector<Uscita>& uscite) {
    uscite_ = &uscite;
    pronte_.clear();
    pronte_.reserve(uscite.size());
    for (const Uscita& u : uscite) pronte_.push_back({Cercabile(u), Piegato(u.Circuito)});
    SegnaMigliori();
    Riordina();
}

void ElencoUscite::SegnaMigliori() {
    std::unordered_map<std::string_view, std::size_t> migliori;
    for (std::size_t i = 0; i < pronte_.size(); ++i) {
        const Uscita& u = (*uscite_)[i];
        if (pronte_[i].Circuito.empty() || u.Migliore <= 0) continue;
        const auto [dove, nuovo] = migliori.try_emplace(pronte_[i].Circuito, i);
        const Uscita& altra = (*uscite_)[dove->second];
        if (!nuovo && (u.Migliore < altra.Migliore ||
                       (u.Migliore == altra.Migliore && Quando(u) < Quando(altra)))) {
            dove->second = i;
        }
    }
    for (const auto& [circuito, i] : migliori) pronte_[i].Migliore = true;
}

void ElencoUscite::Cerca(std::string_view testo) {
    const std::string piegato = Piegato(testo);
    parole_.clear();
    for (std::string_view resto = Rifila(piegato); !resto.empty(); resto = Rifila(resto)) {
        const std::size_t fine = std::min(resto.find(' '), resto.size());
        parole_.emplace_back(resto.substr(0, fine));
        resto.remove_prefix(fine);
    }
    Componi();
}

void ElencoUscite::Ordina(ColonnaUscite colonna, bool discendente) {
    colonna_ = colonna;
    discendente_ = discendente;
    Riordina();
}

void ElencoUscite::Raggruppa(GruppoPer gruppo) {
    gruppo_ = gruppo;
    Riordina();
}

void ElencoUscite::Riordina() {
    if (uscite_ == nullptr) return;
    std::vector<Chiave> chiavi;
    chiavi.reserve(pronte_.size());
    for (const Uscita& u : *uscite_) chiavi.push_back(ChiaveDi(u, colonna_));
    ordine_.resize(pronte_.size());
    std::iota(ordine_.begin(), ordine_.end(), 0);
    std::sort(ordine_.begin(), ordine_.end(), [&](int a, int b) {
        const Chiave& x = chiavi[static_cast<std::size_t>(a)];
        const Chiave& y = chiavi[static_cast<std::size_t>(b)];
        if (x.Vuota != y.Vuota) return y.Vuota;
        if (x.Numero != y.Numero) return (x.Numero < y.Numero) != discendente_;
        if (const int segno = x.Testo.compare(y.Testo); segno != 0) {
            return (segno < 0) != discendente_;
        }
        const Uscita& u = (*uscite_)[static_cast<std::size_t>(a)];
        const Uscita& v = (*uscite_)[static_cast<std::size_t>(b)];
        if (Quando(u) != Quando(v)) return Quando(u) > Quando(v);
        return u.Csv.native() < v.Csv.native();
    });
    Dividi();
    Componi();
}

/// Lays the groups one behind the other; inside each the order stays.
void ElencoUscite::Dividi() {
    posto_.assign(pronte_.size(), 0);
    if (gruppo_ == GruppoPer::Nessuno) return;
    const bool indietro =
        gruppo_ == GruppoPer::Giorno &&
        ((colonna_ != ColonnaUscite::Data && colonna_ != ColonnaUscite::Ora) || discendente_);
    const auto prima = [indietro](const std::string& a, const std::string& b) {
        if (a.empty() != b.empty()) return b.empty();
        return indietro ? a > b : a < b;
    };
    std::map<std::string, int, decltype(prima)> posti(prima);
    std::vector<std::map<std::string, int, decltype(prima)>::iterator> di;
    di.reserve(pronte_.size());
    for (std::size_t i = 0; i < pronte_.size(); ++i) {
        const std::int32_t giorno = (*uscite_)[i].Giorno;
        const std::string nome = gruppo_ == GruppoPer::Circuito ? pronte_[i].Circuito
                                 : giorno > 0                   ? TestoNumero(int{giorno})
                                                                : std::string();
        di.push_back(posti.try_emplace(nome).first);
    }
    int posto = 0;
    for (auto& [chiave, dove] : posti) dove = posto++;
    for (std::size_t i = 0; i < di.size(); ++i) posto_[i] = di[i]->second;
    std::stable_sort(ordine_.begin(), ordine_.end(), [this](int a, int b) {
        return posto_[static_cast<std::size_t>(a)] < posto_[static_cast<std::size_t>(b)];
    });
}

/// The lines of what the words leave, with the headings.
void ElencoUscite::Componi() {
    righe_.clear();
    gruppi_.clear();
    mostrate_ = 0;
    int posto = -1;
    for (const int i : ordine_) {
        const auto k = static_cast<std::size_t>(i);
        const std::string& dove = pronte_[k].Cercabile;
        const bool trovata = std::all_of(
            parole_.begin(), parole_.end(),
            [&dove](const std::string& parola) { return dove.find(parola) != std::string::npos; });
        if (!trovata) continue;
        ++mostrate_;
        if (gruppo_ != GruppoPer::Nessuno) {
            const Uscita& u = (*uscite_)[k];
            if (posto_[k] != posto) {
                posto = posto_[k];
                gruppi_.push_back({NomeGruppo(u), {}, 0, 0});
                righe_.push_back({-1, static_cast<int>(gruppi_.size()) - 1});
            }
            AggiungiAlGruppo(u);
        }
        righe_.push_back({i, std::max(static_cast<int>(gruppi_.size()) - 1, 0)});
    }
}

std::string ElencoUscite::NomeGruppo(const Uscita& uscita) const {
    if (gruppo_ == GruppoPer::Giorno) return TestoGiorno(uscita.Giorno);
    return uscita.Circuito.empty() ? Testo(Voce::UscitaSenzaCircuito) : uscita.Circuito;
}

void ElencoUscite::AggiungiAlGruppo(const Uscita& uscita) {
    GruppoUscite& gruppo = gruppi_.back();
    ++gruppo.Quante;
    if (gruppo_ == GruppoPer::Circuito && gruppo.LunghTracciato.empty()) {
        gruppo.LunghTracciato = uscita.LunghTracciato;
    }
    if (uscita.Migliore > 0 && (gruppo.Migliore == 0 || uscita.Migliore < gruppo.Migliore)) {
        gruppo.Migliore = uscita.Migliore;
    }
}

}  // namespace lapvane
