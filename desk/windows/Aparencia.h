#pragma once

class QApplication;

// What a program needs of the toolkit before its first window: the look of the windows, and their words in Portuguese.
void PreparaAparencia(QApplication &aplicacao);
