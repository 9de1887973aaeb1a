#include "RowOps.h"

namespace kestu {

// Built once per vector width, and the widest the processor has is chosen
// when the library loads: a control's face clears at the speed of memset.
// The loops are spelled out here, not dispatched, so that each clone
// compiles them at its own width.
__attribute__((target_clones("avx512f", "avx2", "default"))) void ApplyRow(Rgb* row, int count,
                                                                           Rgb pen, RasterOp op) {
  using enum RasterOp;
  switch (op) {
    case Blackness:
      return ApplyToRow<Blackness>(row, count, pen);
    case NotMergePen:
      return ApplyToRow<NotMergePen>(row, count, pen);
    case MaskNotPen:
      return ApplyToRow<MaskNotPen>(row, count, pen);
    case NotCopyPen:
      return ApplyToRow<NotCopyPen>(row, count, pen);
    case MaskPenNot:
      return ApplyToRow<MaskPenNot>(row, count, pen);
    case Invert:
      return ApplyToRow<Invert>(row, count, pen);
    case XorPen:
      return ApplyToRow<XorPen>(row, count, pen);
    case NotMaskPen:
      return ApplyToRow<NotMaskPen>(row, count, pen);
    case MaskPen:
      return ApplyToRow<MaskPen>(row, count, pen);
    case NotXorPen:
      return ApplyToRow<NotXorPen>(row, count, pen);
    case Nop:
      return;
    case MergeNotPen:
      return ApplyToRow<MergeNotPen>(row, count, pen);
    case CopyPen:
      break;
    case MergePenNot:
      return ApplyToRow<MergePenNot>(row, count, pen);
    case MergePen:
      return ApplyToRow<MergePen>(row, count, pen);
    case Whiteness:
      return ApplyToRow<Whiteness>(row, count, pen);
  }
  ApplyToRow<CopyPen>(row, count, pen);  // and any number outside the host's
}

}  // namespace kestu
