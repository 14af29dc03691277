#pragma once

#include <optional>
#include <string>

namespace servidor {

// The certificate by which the server is known, and its key, both as PEM.
struct ParDeChaves {
    std::string Certificado; // with those that stand between it and the authority
    std::string Chave;

    // SHA-256 of the certificate: 32 pairs of hexadecimal digits with colons between them.
    std::string Digital() const;
    // In 60 days before its end, a sentence that says so; nothing before.
    std::string AvisoDeVencimento() const;

    // The server's own, made when there is none in the directory: for ten years, known to this machine's names and
    // addresses, the key readable by the owner only. Falha with a sentence.
    static ParDeChaves Proprio(const std::string &pasta);
    // Falha with a sentence when Proprio would not do; makes nothing. What is there, if anything is.
    static std::optional<ParDeChaves> ConferePasta(const std::string &pasta);
    // Of an authority. Falha with a sentence.
    static ParDeChaves DosArquivos(const std::string &certificado, const std::string &chave);
    // Why these files are of no use, as a sentence: unreadable, not of each other, not yet or no longer valid.
    static std::string RecusaDosArquivos(const std::string &certificado, const std::string &chave);
};

} // namespace servidor
