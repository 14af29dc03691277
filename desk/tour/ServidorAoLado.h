#pragma once

#include <QString>

#include <cstdint>
#include <filesystem>
#include <memory>

class QProcess;

namespace mesa {

// The program of the server as another process on the loopback, over a sample of its own. It belongs to one thread, and
// goes away with it.
class ServidorAoLado {
  public:
    // programa: the server's. pasta: where its settings, registry and certificate go. Makes the sample; a Diferenca
    // when it cannot be made.
    ServidorAoLado(QString programa, const QString &pasta);
    ServidorAoLado(const ServidorAoLado &) = delete;
    ServidorAoLado &operator=(const ServidorAoLado &) = delete;
    ~ServidorAoLado();

    // Starts it, each time at the same port, and waits until it says that it is there. A Diferenca when it does not.
    void Comeca();
    // It takes what comes and answers nothing any more.
    void Emudece();
    // It dies at once, with whatever it was doing.
    void Mata();

    std::filesystem::path Registro() const;
    // As a person types it, once it has begun.
    QString Onde() const;
    // Fingerprint of its certificate, as it tells it.
    const QString &Digital() const { return m_Digital; }

  private:
    void EscreveConfiguracao() const;
    std::unique_ptr<QProcess> Inicia(const QStringList &opcoes) const;

    QString m_Programa;
    QString m_Pasta;
    std::unique_ptr<QProcess> m_Processo;
    std::uint16_t m_Porta = 0; // 0: whichever is free
    QString m_Digital;
};

} // namespace mesa
