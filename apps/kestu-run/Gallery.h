#pragma once
// The built-in gallery: one form with every control of the library in
// several of its states, and a caption for each saying what it shows.

#include <string>
#include <vector>

#include "kestu/raster/Raster.h"

namespace kestu {

class Host;
class Form;

class Gallery {
 public:
  // Builds the gallery form in `host` and makes it the active form.
  explicit Gallery(Host& host);

  Form& GetForm() const { return *form_; }
  // The form's background with the captions, beside the controls: the
  // picture the form is drawn over.
  const Raster& Backdrop() const { return backdrop_; }

 private:
  struct Caption {
    int x = 0;  // pixels of the form
    int y = 0;
    std::string text;
    bool heading = false;
  };

  void AddPanels();
  void AddLines();
  void AddNumberEdits();
  void AddTextEdits();
  void AddCopiers();
  void AddCommandButtons();
  void AddToolbar();
  void AddDialogControls();
  void AddDialogInputs();
  void Label(int x, int y, std::string text, bool heading = false);
  void DrawCaptions();

  Host& host_;
  Form* form_ = nullptr;
  std::vector<Caption> captions_;
  Raster backdrop_{0, 0};
};

}  // namespace kestu
