#pragma once

#include "services/Conferidor.h"
#include "services/LeitorSQLite.h"
#include "services/PalavrasDaConferencia.h"

#include <QByteArray>
#include <QStringList>

#include <cstdint>
#include <deque>
#include <functional>
#include <optional>
#include <set>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace mesa {

// One check of a registry, under way.
class Exame {
  public:
    Exame(LeitorSQLite &leitor, const SegueConferencia &segue);

    // Why a registry of a newer one is not looked through.
    static std::string FraseDeMaisNova(std::int64_t versao);

    // Whether the file is a registry of this program's version; other ones are answered in the result.
    bool Reconhece();
    // There is a head from outside, and this registry, which is not recognised, cannot be the one that it is of.
    void RecusaCabeca();

    void ConfereArquivo(bool rapido);
    void ConfereEsquema();
    // The versions alone, of a registry whose schema is looked at elsewhere.
    void ConfereVersoes();
    // What was found elsewhere, a sentence each; tables that were not read there are not looked at here.
    void Recebe(const std::vector<std::string> &achados, const std::set<std::string> &naoLidas);
    // A row that refers to one of another table that is not there.
    void AchaSolta(const std::string &tabela, std::int64_t chave, const std::string &para);
    void ConfereCorrente();
    // That many entries at its end only.
    // contadas: how many entries there are, where the file does not hold all of them.
    void ConfereFimDaCorrente(std::int64_t quantas, std::optional<std::int64_t> contadas = std::nullopt);
    void ConfereTabelas();
    // The rows that the entries looked through were about.
    void ConfereTocadas();
    void ConfereReferencias();
    void ConfereCondicoes();
    void ConfereSobreposicoes();
    void ConfereDesde(const CabecaAssinada &cabeca);
    // What can be looked at in a registry of an earlier version.
    void ConfereAntigo();

    ResultadoDaConferencia Resultado;
    std::int64_t Achados = 0; // the result names the first of them
    std::int64_t Linhas = 0;
    std::int64_t Documentos = 0;

  private:
    struct Grupo;
    class Grupos;

    void Acha(const std::string &frase);
    // Runs a part; what cannot be read becomes a finding.
    template <class Parte> void Tenta(double ate, const std::string &oQue, Parte &&parte);
    // Hands over the rows behind that key in their order, and the key alone of a row that cannot be read. False when
    // the table cannot be read to its end.
    bool CadaLinha(const Esquema::Tabela &tabela, std::int64_t depoisDe,
                   const std::function<void(std::int64_t chave, const QVariantList *valores)> &faz);

    bool MesmoEsquema();
    bool PodeSerLida(const Esquema::Tabela &tabela);
    bool TemTabelas(const QStringList &nomes);
    void LeVersoes();
    void ConfereCorrenteDepoisDe(std::int64_t inicio);
    void ConfereTabela(const Esquema::Tabela &tabela);
    void ConfereColunas(const Esquema::Tabela &tabela, std::int64_t chave, const QVariantList &valores);
    void ConfereContraHistorico(const Esquema::Tabela &tabela, std::int64_t chave, const QVariantList &valores,
                                const EntradaLida &ultima);
    void ConfereAntes(std::string_view entidade, std::int64_t chave, const EntradaLida &anterior,
                      const EntradaLida &entrada);
    void ConfereDerivados(const Esquema::Tabela &tabela, std::int64_t chave, const QVariantList &valores);
    void ConfereDocumento(const std::string &nome, std::int64_t tamanho, const QString &soma,
                          const QByteArray &conteudo, const std::string &autor);
    void ConfereReferencia(const std::string &tabela, const std::string &coluna, const std::string &falta);
    void AchaFaltaDeLinha(std::string_view tabela, std::int64_t chave, const EntradaLida &ultima);

    LeitorSQLite &m_Leitor;
    PalavrasDaConferencia m_Palavras;
    double m_Parte = 0;
    std::string m_OQue;
    std::int64_t m_Versao = 0;
    std::deque<std::pair<std::string, std::int64_t>> m_UltimasTocadas; // by the last entries that were read
    std::set<std::string> m_Ilegiveis;                                 // tables that are not what they should be
};

} // namespace mesa
