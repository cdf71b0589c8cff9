// The compiled part of the Python module mvfreq.
#include <pybind11/pybind11.h>

#include "archives.h"
#include "attention.h"
#include "errors.h"
#include "filters.h"
#include "frequency_buffer.h"
#include "pel_buffers.h"
#include "proposals.h"
#include "xform.h"

PYBIND11_MODULE(_core, module) {
    module.doc() = "The compiled part of mvfreq; import mvfreq, which offers all of it.";
    module.attr("__version__") = MVFREQ_VERSION;
    translateErrors();
    bindAttention(module);
    bindXform(module);
    bindPelBuffers(module);
    bindFrequencyBuffer(module);
    bindTransforms(module);
    bindArithmetic(module);
    bindFilters(module);
    bindPictures(module);
    bindProposals(module);
    bindArchives(module);
}
