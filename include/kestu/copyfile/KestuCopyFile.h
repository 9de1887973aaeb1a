#pragma once
// A file copier that copies one file to another block by block, can split
// the copy into numbered volumes ("@name" gives name.001, name.002, ...)
// and join such a set back, and shows its own progress bar. The copy runs
// synchronously inside BeginCopyFile and reports only through events:
// nothing a copy meets ever reaches the caller as an exception.

#include <cstdint>
#include <string>

#include "kestu/foundation/ClassInfo.h"
#include "kestu/foundation/Event.h"
#include "kestu/foundation/Integer.h"
#include "kestu/foundation/OleColor.h"
#include "kestu/foundation/UserControl.h"

namespace kestu {

// Size of each read/write block. Other values are stored but make every
// copy fail with error 94.
enum CC_BlockSize : int32_t { Block_1K = 1, Block_5K = 2, Block_10K = 3 };

class KestuCopyFile : public UserControl {
 public:
  // The class's metadata: properties, the method, the four events.
  static ClassInfo& Info();
  const ClassInfo& Class() const override { return Info(); }

  // Name of volume `number` that follows `previous` (or, for the first
  // volume, the set's name without its "@"): cut before the first "." of
  // the whole path, blanks trimmed, then "." and the number in at least
  // three digits.
  static std::string FirstVolumeName(const std::string& set_name);
  static std::string NextVolumeName(const std::string& previous, int16_t number);

  // The properties are set through the metadata. StartCaption: at run
  // time, whether the "0%" caption is drawn when the control shows.
  // BlockSize: `CC_BlockSize`, a Long held in 16 bits. VolumeSize: the size
  // limit of each output volume, in KB. ForeColor: the colour of the
  // caption and of the bar; assigning it redraws.
  bool StartCaption() const { return start_caption_; }
  int32_t BlockSize() const { return block_size_; }
  int32_t VolumeSize() const { return volume_size_; }
  OLE_COLOR ForeColor() const { return fore_color_; }
  // The file to copy from, "@name" for a volume set. Write-only.
  void SetSourceFile(const std::string& name) { source_file_ = name; }
  // The file to copy to, "@name" for a volume set. Write-only.
  void SetNewFile(const std::string& name) { new_file_ = name; }

  // Copies SourceFile to NewFile; every outcome arrives as an event.
  void BeginCopyFile();

  // Once, when a single-file source has been copied to its end.
  Event<> Done;
  // Once, when a run-time error stops the copy.
  Event<int16_t> Error;
  // After every block and every time the bar is drawn: whole percent and
  // the by-reference cancel flag.
  Event<int16_t, int16_t&> Progress;
  // Before each volume file is opened, with its full name.
  Event<std::string, int16_t&> NextVolume;

  KestuCopyFile();

  void UserControl_Initialize() override;
  void UserControl_ReadProperties(PropertyBag& bag) override;
  void UserControl_Resize() override { (void)ShowFace(); }
  void UserControl_Show() override { (void)ShowFace(); }
  void UserControl_Paint() override { (void)ShowFace(); }

 private:
  // One copy's moving parts (the routine's local state).
  struct CopyState;
  // How a step of the copy ends: go on, stop quietly (cancelled), or stop
  // at once because a handler destroyed the control.
  enum class Flow { Continue, Stop, Gone };

  Flow RunCopy(CopyState& copy);
  Flow CopyOneSource(CopyState& copy);
  Flow StartNextTargetVolume(CopyState& copy);
  Flow AnnounceVolume(const std::string& name);
  Flow EndCancelled();
  [[nodiscard]] bool DrawProgress(Int32 current);
  [[nodiscard]] bool ShowFace();

  // Values for a new copier, and for a key a saved one lacks, are in its
  // metadata.
  bool start_caption_ = false;
  int16_t block_size_ = 0;
  int32_t volume_size_ = 0;
  OLE_COLOR fore_color_ = 0;
  std::string source_file_;
  std::string new_file_;
  int16_t cancel_ = 0;
  Int32 progress_total_ = 100;
};

}  // namespace kestu
