#pragma once

class QApplication;

namespace mesa {

// What a program needs of the toolkit before its first window: the look of the windows, and their words in Portuguese.
void PreparaAparencia(QApplication &aplicacao);

} // namespace mesa
