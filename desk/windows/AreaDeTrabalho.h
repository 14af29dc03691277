#pragma once

#include <QMdiArea>

namespace mesa {

// Where the windows of the desk's work stand, each on a tab of its own that shows it whole.
class AreaDeTrabalho : public QMdiArea {
  public:
    explicit AreaDeTrabalho(QWidget *dono);
};

} // namespace mesa
