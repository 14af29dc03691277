#pragma once

// Person's face of what is clicked.
class Clicavel {
  public:
    virtual ~Clicavel() = default;

    // The person clicks it, which also brings the focus to it.
    virtual bool Clica() = 0;
};
