// The memory that pictures live in.
#ifndef DOCPREP_HEAP_H
#define DOCPREP_HEAP_H

namespace docprep {

/// Makes the heap ready for pictures that come and go: what is freed is kept, and the first 128 MiB are huge pages where
/// the system lends them. Otherwise a fifth of a run goes into first touches of pages of 4 KiB. Call it once, first.
/// Whatever the system refuses is left as it is.
void prepare_heap();

}  // namespace docprep

#endif  // DOCPREP_HEAP_H
