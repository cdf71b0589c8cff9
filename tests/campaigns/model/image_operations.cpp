// Operations of images: new pels, views, copies, display mapping.
#include "campaigns/model/images.h"
#include "campaigns/model/operation.h"
#include "reference/fft/map_image.h"
#include "support/pel_images.h"
#include "support/thrown.h"

namespace model {
namespace {

const Xform kSomeXform = {true, {2, 0.5, -0.25, 3, 7, -9}};

template <class T>
void addNew(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"new " + type,
                   {kObject, kSize, kSize, kPlace, kPlace, kSeed},
                   [](Library& l, const Arguments& a) {
                       auto content = contentFrom<T>(a[5], a[1], a[2]);
                       content.x = a[3];
                       content.y = a[4];
                       mvPelBuffer<T> made = support::pelBufferOf(content);
                       if (a[5] % 2 != 0) made.copyXforms(support::someXformCache());
                       imagesOf<T>(l)[at(a, 0)] = made;
                   },
                   [](World& w, const Arguments& a) {
                       Image<T> made = imageOf(contentFrom<T>(a[5], a[1], a[2]));
                       made.x = a[3];
                       made.y = a[4];
                       if (a[5] % 2 != 0) made.xform = kSomeXform;
                       imagesOf<T>(w)[at(a, 0)] = made;
                   },
                   8});
}

template <class T>
void addSetting(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"set " + type,
                   {kObject, kSeed},
                   [](Library& l, const Arguments& a) {
                       mfPelSet(imagesOf<T>(l)[at(a, 0)], static_cast<T>(a[1]));
                   },
                   [](World& w, const Arguments& a) {
                       Image<T>& image = imagesOf<T>(w)[at(a, 0)];
                       if (!image.isBound()) throw Thrown{kBaseError};
                       reference::Image<T> plain(image.width, image.height, static_cast<T>(a[1]));
                       plain.x = image.x;
                       plain.y = image.y;
                       copyInto(plain, image);
                   }});
}

template <class T>
void addPels(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"copy pels of " + type,
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       mfPelCopy(imagesOf<T>(l)[at(a, 0)], imagesOf<T>(l)[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       copyPels(imagesOf<T>(w)[at(a, 0)], imagesOf<T>(w)[at(a, 1)]);
                   },
                   3});
    all.push_back({"clone " + type,
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       imagesOf<T>(l)[at(a, 0)] = mfPelClone(imagesOf<T>(l)[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       Image<T> clone = imagesOf<T>(w)[at(a, 1)];
                       if (clone.isBound()) {
                           clone = imageOf(contentOf(clone));
                           clone.xform = imagesOf<T>(w)[at(a, 1)].xform;
                       }
                       imagesOf<T>(w)[at(a, 0)] = clone;
                   },
                   1});
}

template <class T>
void addViews(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"view of " + type,
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       imagesOf<T>(l)[at(a, 0)] = imagesOf<T>(l)[at(a, 1)];
                   },
                   [](World& w, const Arguments& a) {
                       imagesOf<T>(w)[at(a, 0)] = imagesOf<T>(w)[at(a, 1)];
                   }});
    all.push_back({"move " + type,
                   {kObject, kOtherObject},
                   [](Library& l, const Arguments& a) {
                       imagesOf<T>(l)[at(a, 1)] = std::move(imagesOf<T>(l)[at(a, 0)]);
                   },
                   [](World& w, const Arguments& a) {
                       imagesOf<T>(w)[at(a, 1)] = std::exchange(imagesOf<T>(w)[at(a, 0)], {});
                   },
                   1});
    all.push_back(
        {"unbind " + type,
         {kObject},
         [](Library& l, const Arguments& a) { imagesOf<T>(l)[at(a, 0)] = mvPelBuffer<T>(); },
         [](World& w, const Arguments& a) { imagesOf<T>(w)[at(a, 0)] = {}; },
         1});
}

template <class T>
void addWindows(Operations& all, const std::string& type) {
    using enum Domain;
    all.push_back({"window of " + type,
                   {kObject, kObject, kPlace, kPlace, kSize, kSize},
                   [](Library& l, const Arguments& a) {
                       imagesOf<T>(l)[at(a, 0)] =
                           imagesOf<T>(l)[at(a, 1)].window(a[2], a[3], a[4], a[5]);
                   },
                   [](World& w, const Arguments& a) {
                       imagesOf<T>(w)[at(a, 0)] =
                           windowOf(imagesOf<T>(w)[at(a, 1)], a[2], a[3], a[4], a[5]);
                   },
                   4});
    all.push_back(
        {"place " + type,
         {kObject, kPlace, kPlace},
         [](Library& l, const Arguments& a) { imagesOf<T>(l)[at(a, 0)].offset(a[1], a[2]); },
         [](World& w, const Arguments& a) {
             imagesOf<T>(w)[at(a, 0)].x = a[1];
             imagesOf<T>(w)[at(a, 0)].y = a[2];
         }});
    all.push_back({"transform of " + type,
                   {kObject, kObject},
                   [](Library& l, const Arguments& a) {
                       imagesOf<T>(l)[at(a, 0)].copyXforms(imagesOf<T>(l)[at(a, 1)]);
                   },
                   [](World& w, const Arguments& a) {
                       imagesOf<T>(w)[at(a, 0)].xform = imagesOf<T>(w)[at(a, 1)].xform;
                   },
                   1});
}

Image<Byte> mapped(const Image<double>& src, long mapping, double low, double high) {
    if (!src.isBound()) throw Thrown{support::kUnbound};
    Image<Byte> image = newImage<Byte>(src.width, src.height);
    image.xform = src.xform;
    image.pels->values = reference::mapImage(contentOf(src).pels,
                                             static_cast<reference::Mapping>(mapping), low, high);
    return image;
}

void addMap(Operations& all) {
    using enum Domain;
    all.push_back(
        {"map",
         {kObject, kObject, kMapping, kPlace, kPlace},
         [](Library& l, const Arguments& a) {
             l.bytes[at(a, 0)] = mfFrequencyMapImage(
                 l.doubles[at(a, 1)], static_cast<mvFrequencyDefs::FrequencyMapping>(a[2]),
                 static_cast<double>(a[3]) * 2.5, static_cast<double>(a[4]) * 10);
         },
         [](World& w, const Arguments& a) {
             w.bytes[at(a, 0)] = mapped(w.doubles[at(a, 1)], a[2], static_cast<double>(a[3]) * 2.5,
                                        static_cast<double>(a[4]) * 10);
         },
         4});
}

}  // namespace

void addImageOperations(Operations& all) {
    addNew<Byte>(all, "bytes");
    addSetting<Byte>(all, "bytes");
    addPels<Byte>(all, "bytes");
    addNew<Short>(all, "shorts");
    addSetting<Short>(all, "shorts");
    addPels<Short>(all, "shorts");
    addNew<double>(all, "doubles");
    addSetting<double>(all, "doubles");
    addPels<double>(all, "doubles");
    addViews<Byte>(all, "bytes");
    addWindows<Byte>(all, "bytes");
    addViews<Short>(all, "shorts");
    addWindows<Short>(all, "shorts");
    addViews<double>(all, "doubles");
    addWindows<double>(all, "doubles");
    addMap(all);
}

}  // namespace model
