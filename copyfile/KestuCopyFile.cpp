#include "kestu/copyfile/KestuCopyFile.h"

#include <new>

#include "copyfile/VolumeSet.h"
#include "kestu/foundation/HostFiles.h"
#include "kestu/foundation/PropertyBag.h"
#include "kestu/foundation/RuntimeError.h"
#include "kestu/foundation/Variant.h"

namespace kestu {

namespace {

// The copier's two fixed file numbers: only one copy can be in progress in
// the whole library at a time, deliberately.
constexpr int kSourceNumber = 1;
constexpr int kTargetNumber = 2;

constexpr int16_t kCopyPen = 13;
constexpr int16_t kNotXorPen = 10;

const ParamInfo kCancelParam{"Cancel", "Integer", VarType::Integer, true};

const EventInfo kDoneInfo{
    "Done", {}, "Raised when the file has been copied. [Ocorre quando o arquivo foi copiado.]"};
const EventInfo kErrorInfo{
    "Error",
    {{"ErrNumber", "Integer", VarType::Integer, false}},
    "Raised when an error stops the copy. [Ocorre quando um erro interrompe a cópia.]"};
const EventInfo kProgressInfo{
    "Progress",
    {{"Current", "Integer", VarType::Integer, false}, kCancelParam},
    "Raised after each block is copied. [Ocorre após a cópia de cada bloco.]"};
const EventInfo kNextVolumeInfo{
    "NextVolume",
    {{"NextFileName", "String", VarType::String, false}, kCancelParam},
    "Raised before each volume file is opened. [Ocorre antes da abertura de cada volume.]"};

// Bytes per block of a `CC_BlockSize`. Any other value is the host's
// "Invalid use of Null", raised only once the files are open.
Int32 BlockBytes(int16_t block_size) {
  switch (block_size) {
    case Block_1K:
      return 1024;
    case Block_5K:
      return 5120;
    case Block_10K:
      return 10240;
    default:
      throw RuntimeError(err::kInvalidUseOfNull, "BlockSize");
  }
}

void CloseCopyFiles() {
  HostFiles::Instance().Close(kSourceNumber);
  HostFiles::Instance().Close(kTargetNumber);
}

}  // namespace

struct KestuCopyFile::CopyState {
  std::string source;
  std::string target;
  bool source_set = false;
  bool target_set = false;
  Int16 volume = 1;  // shared by source and target
  Int32 block_bytes = 0;
};

ClassInfo& KestuCopyFile::Info() {
  static ClassInfo info = [] {
    ClassInfo c;
    c.name = "KestuCopyFile";
    c.help =
        "Copies a file block by block, splitting it into volumes or joining them, with a "
        "progress bar. [Copia um arquivo bloco a bloco, dividindo-o em volumes ou juntando-os, "
        "com uma barra de progresso.]";
    c.default_width = 2400;
    c.default_height = 360;
    c.create = [] { return std::make_unique<KestuCopyFile>(); };
    using C = KestuCopyFile;
    c.properties = {
        Field<C>("StartCaption", "Boolean", &C::start_caption_,
                 "Returns/sets whether the 0% caption shows before copying. [Retorna/define se "
                 "a legenda 0% aparece antes da cópia.]",
                 OnSet::Notify)
            .Saved(1)
            .Defaults(true),
        Field<C, int32_t>("BlockSize", "CC_BlockSize", &C::block_size_,
                          "Returns/sets the size of each block copied. [Retorna/define o "
                          "tamanho de cada bloco copiado.]",
                          OnSet::Notify)
            .Saved(2)
            .Defaults(Block_10K),
        Field<C>("VolumeSize", "Long", &C::volume_size_,
                 "Returns/sets the size of each volume in KB. [Retorna/define o tamanho de cada "
                 "volume em KB.]",
                 OnSet::Notify)
            .Saved(4)
            .Defaults(1400),
        Field<C>("ForeColor", "OLE_COLOR", &C::fore_color_,
                 "Returns/sets the color of the caption and the bar. [Retorna/define a cor da "
                 "legenda e da barra.]",
                 OnSet::NotifyThenRedraw)
            .Saved(3)
            .Defaults(syscolor::kHighlight),
        // Write-only: the copier never gives its names back.
        Property<C>("SourceFile", "String", nullptr, &C::SetSourceFile,
                    "Sets the file to copy; @name for a volume set. [Define o arquivo a "
                    "copiar; @nome para um conjunto de volumes.]"),
        Property<C>("NewFile", "String", nullptr, &C::SetNewFile,
                    "Sets the file to create; @name for a volume set. [Define o arquivo a "
                    "criar; @nome para um conjunto de volumes.]"),
    };
    c.methods = {Method<C>("BeginCopyFile", &C::BeginCopyFile,
                           "Copies SourceFile to NewFile. [Copia SourceFile para NewFile.]")};
    c.events = {&kDoneInfo, &kErrorInfo, &kProgressInfo, &kNextVolumeInfo};
    c.enums = {{"CC_BlockSize",
                {{"Block_1K", Block_1K}, {"Block_5K", Block_5K}, {"Block_10K", Block_10K}}}};
    c.default_event = "Progress";
    c.redraw = [](UserControl& copier) { (void)static_cast<C&>(copier).ShowFace(); };
    // The toolbox picture: a disk, an arrow to a page, and the progress bar under them.
    // clang-format off
    c.toolbox_icon = {
        "bllllb.....kkkk.",
        "bllblbb....kwwkk",
        "bllllbb..k.kggwk",
        "bbbbbbbkkkkkwwwk",
        "bwwwwwb..k.kgggk",
        "bwwwwwb....kwwwk",
        "bwwwwwb....kkkkk",
        "................",
        "................",
        "gggggggggggggggw",
        "gkkkkkkkkkkkkklw",
        "gkbbbbbbbbwwwwlw",
        "gkbbbbbbbbwwwwlw",
        "gkbbbbbbbbwwwwlw",
        "gllllllllllllllw",
        "wwwwwwwwwwwwwwww",
    };
    // clang-format on
    return c;
  }();
  return info;
}

KESTU_REGISTER_CONTROL(KestuCopyFile)

KestuCopyFile::KestuCopyFile()
    : Done(kDoneInfo), Error(kErrorInfo), Progress(kProgressInfo), NextVolume(kNextVolumeInfo) {}

// ---- Volume names ----

std::string KestuCopyFile::FirstVolumeName(const std::string& set_name) {
  return volume_set::FirstVolumeName(set_name);
}

// The cut is at the first dot of the whole path, deliberately: a dot in a
// folder's name or an extension is cut away from the second volume on.
std::string KestuCopyFile::NextVolumeName(const std::string& previous, int16_t number) {
  return volume_set::NextVolumeName(previous, number);
}

// ---- Lifecycle ----

void KestuCopyFile::UserControl_Initialize() {
  cancel_ = 0;
}

void KestuCopyFile::UserControl_ReadProperties(PropertyBag& bag) {
  UserControl::UserControl_ReadProperties(bag);
  SetBackColor(syscolor::kWindowBackground);
}

// ---- The copy ----

void KestuCopyFile::BeginCopyFile() {
  cancel_ = 0;
  CopyState copy{.source = source_file_, .target = new_file_};
  Flow flow = Flow::Continue;
  int error_number = 0;
  // Every run-time error of the copy, raised by the files, by the
  // arithmetic or on purpose, ends here and becomes the Error event.
  try {
    flow = RunCopy(copy);
  } catch (const RuntimeError& e) {
    error_number = e.Number();
  } catch (const std::bad_alloc&) {
    error_number = err::kOutOfMemory;
  }
  if (flow != Flow::Continue) {
    if (flow == Flow::Gone) CloseCopyFiles();
    return;  // cancelled (files already dealt with) or the control is gone
  }
  bool alive = true;
  if (error_number != 0) {
    int16_t number = ToInt16(error_number);
    alive = RaiseEvent(Error, number);
  } else {
    alive = RaiseEvent(Done);
  }
  if (alive) cancel_ = 0;
  CloseCopyFiles();
}

KestuCopyFile::Flow KestuCopyFile::RunCopy(CopyState& copy) {
  HostFiles& files = HostFiles::Instance();
  copy.source_set = volume_set::IsSetName(copy.source);
  copy.target_set = volume_set::IsSetName(copy.target);
  copy.volume = 1;
  // A cancel before anything is open returns at once and leaves the flag
  // as the handler set it.
  if (copy.source_set) {
    copy.source = FirstVolumeName(copy.source);
    if (Flow flow = AnnounceVolume(copy.source); flow != Flow::Continue) return flow;
  }
  if (copy.target_set) {
    copy.target = FirstVolumeName(copy.target);
    if (Flow flow = AnnounceVolume(copy.target); flow != Flow::Continue) return flow;
  }
  files.OpenBinary(kSourceNumber, copy.source);
  files.OpenBinary(kTargetNumber, copy.target);
  copy.block_bytes = BlockBytes(block_size_);  // after both opens, as the host did

  // Joining ends only by cancelling or by a failure: after the last volume
  // the next name is missing and the copy ends with error 53. Intended.
  for (;;) {
    if (Flow flow = CopyOneSource(copy); flow != Flow::Continue) return flow;
    if (!copy.source_set) return Flow::Continue;
    files.Close(kSourceNumber);
    copy.volume += 1;
    copy.source = NextVolumeName(copy.source, copy.volume);
    if (Flow flow = AnnounceVolume(copy.source); flow != Flow::Continue) {
      return flow == Flow::Stop ? EndCancelled() : flow;
    }
    if (HostFiles::Dir(copy.source).empty()) {
      throw RuntimeError(err::kFileNotFound, copy.source);
    }
    files.OpenBinary(kSourceNumber, copy.source);
  }
}

KestuCopyFile::Flow KestuCopyFile::CopyOneSource(CopyState& copy) {
  HostFiles& files = HostFiles::Instance();
  Int32 remaining = Int32::From(files.Length(kSourceNumber));
  progress_total_ = remaining;
  Int32 copied = 0;
  Int32 in_volume = 0;
  // A missing source was created empty by its open and fails here too,
  // leaving that empty file behind.
  if (remaining == 0) throw RuntimeError(err::kFileNotFound, copy.source);

  while (!files.AtEnd(kSourceNumber)) {
    const Int32 chunk = remaining >= copy.block_bytes ? copy.block_bytes : remaining;
    if (chunk > 0)
      files.CopyBlock(kSourceNumber, kTargetNumber, static_cast<size_t>(chunk.value()));
    copied += chunk;
    if (!DrawProgress(copied)) return Flow::Gone;
    if (cancel_ != 0) return EndCancelled();
    remaining -= chunk;
    if (remaining < 1) break;  // before the volume test: no empty last volume
    if (!copy.target_set) continue;
    // Tested after the block is written: a full volume is the smallest
    // whole number of blocks that exceeds the size.
    in_volume += chunk;
    // The limit is a 32-bit product: past 2,097,151 KB it is error 6.
    const Int32 size_limit = Int32(volume_size_) * Int32(1024);
    if (!volume_set::VolumeIsFull(in_volume, size_limit)) continue;
    in_volume = 0;
    if (Flow flow = StartNextTargetVolume(copy); flow != Flow::Continue) return flow;
  }
  return Flow::Continue;
}

KestuCopyFile::Flow KestuCopyFile::StartNextTargetVolume(CopyState& copy) {
  HostFiles& files = HostFiles::Instance();
  files.Close(kTargetNumber);
  copy.volume += 1;
  copy.target = NextVolumeName(copy.target, copy.volume);
  if (Flow flow = AnnounceVolume(copy.target); flow != Flow::Continue) {
    return flow == Flow::Stop ? EndCancelled() : flow;
  }
  files.OpenBinary(kTargetNumber, copy.target);
  return Flow::Continue;
}

KestuCopyFile::Flow KestuCopyFile::AnnounceVolume(const std::string& name) {
  std::string next_file_name = name;  // by value: the handler cannot rename the volume
  if (!RaiseEvent(NextVolume, next_file_name, cancel_)) return Flow::Gone;
  return cancel_ != 0 ? Flow::Stop : Flow::Continue;
}

// Cancellation is not a failure: no event follows and what was written
// stays on disk.
KestuCopyFile::Flow KestuCopyFile::EndCancelled() {
  cancel_ = 0;
  CloseCopyFiles();
  return Flow::Stop;
}

// ---- The face ----

bool KestuCopyFile::DrawProgress(Int32 current) {
  UserControl::SetForeColor(fore_color_);
  SetBackColor(syscolor::kWindowBackground);
  // A 32-bit product on purpose: past 21,474,836 bytes of one source it
  // overflows and the copy stops with error 6.
  const double percent = Int(static_cast<double>(current * Int32(100)) / progress_total_);

  // The face is cleared first, so a block that leaves the percentage as it
  // was finds its face drawn already.
  DrawFace([&] {
    SetDrawMode(kCopyPen);
    Line(0, 0, Width(), Height(), BackColor(), LineKind::FilledBox);
    const std::string text = FormatDouble(percent) + "%";
    SetCurrentX((ScaleWidth() - TextWidth(text)) / 2);
    SetCurrentY((ScaleHeight() - TextHeight(text)) / 2);
    Print(text);
    // Through the not-xor pen the caption's pixels under the bar turn to
    // the background colour, so it stays readable across the bar's edge.
    SetDrawMode(kNotXorPen);
    Line(0, 0, static_cast<float>(ScaleWidth() / 100.0 * percent), Height(),
         UserControl::ForeColor(), LineKind::FilledBox);
  });
  Refresh();

  int16_t current_percent = CInt(percent);
  return RaiseEvent(Progress, current_percent, cancel_);
}

// Resets the divisor to 100 even in the middle of a copy: a repaint that
// the host lets happen during a Progress handler makes the next
// percentages count against 100. Deliberately not guarded.
bool KestuCopyFile::ShowFace() {
  SetBackColor(syscolor::kWindowBackground);
  progress_total_ = 100;
  if (!AmbientUserMode()) return DrawProgress(50);
  if (start_caption_) return DrawProgress(0);
  // The host repaints the face when its BackColor is assigned; this
  // surface does not, so the background is laid down here.
  Cls();
  return true;
}

}  // namespace kestu
