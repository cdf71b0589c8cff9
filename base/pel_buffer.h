// Pel buffers: views of shared pixels, with a window, an offset and a client transform.
#pragma once

#include <base/export.h>
#include <base/geometry.h>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <type_traits>
#include <utility>

template <class T>
class mvPelBuffer_const;
template <class T>
class mvPelBuffer;

/// What every pel buffer has, whatever its pels are.
///
/// A pel buffer is a window of `width()` by `height()` pels in memory that all its copies share;
/// the window, the offset and the client transform belong to each view. Rows run downwards,
/// `rowUpdate()` pels apart. The offset is the place of the window's first pel in image
/// coordinates. The window's sides are at most 2^31 - 1.
class MVBASE_API mv_PelBuffer {
  public:
    /// True when the buffer has pels.
    [[nodiscard]] bool isBound() const noexcept { return origin_ != nullptr; }

    /// Pels in a row, rows, and pels from one row to the next; all 0 when not bound.
    long width() const noexcept { return width_; }
    long height() const noexcept { return height_; }
    long rowUpdate() const noexcept { return rowUpdate_; }

    /// The place of the window's first pel in image coordinates.
    mvPair<long> offset() const noexcept { return {offset_.x, offset_.y}; }

    /// Moves the view in image coordinates, bound or not. Values are clamped to signed 32 bits.
    void offset(long x, long y) noexcept;
    void offset(const mvPair<long>& xy) noexcept { offset(xy.x, xy.y); }

    /// The client transform, if the view has one.
    const mv2XformCache& xformCache() const noexcept { return xform_; }

    /// Takes over a client transform, or the lack of one.
    void copyXforms(const mv2XformCache& xform) noexcept { xform_ = xform; }
    void copyXforms(const mv_PelBuffer& other) noexcept { xform_ = other.xform_; }

  protected:
    mv_PelBuffer() noexcept = default;
    mv_PelBuffer(const mv_PelBuffer&) noexcept = default;
    mv_PelBuffer(mv_PelBuffer&& other) noexcept : mv_PelBuffer() { swap(other); }

    /// Take over what `other` views. Throw an mvExceptionWithString, and change nothing, when this
    /// buffer writes its pels and `other` only reads them.
    mv_PelBuffer& operator=(const mv_PelBuffer& other);
    mv_PelBuffer& operator=(mv_PelBuffer&& other);
    ~mv_PelBuffer() = default;

    /// Makes this a buffer that writes its pels, for as long as it lives.
    void grantWriting() noexcept { access_.writes = true; }

    /// Allocates zeroed pels of `pelSize` bytes, rows at multiples of `alignment` bytes.
    void allocate(long width, long height, long alignment, std::size_t pelSize);

    /// Views pels that belong to someone else.
    void bind(const void* pels, long width, long height, long rowUpdate, std::size_t pelSize,
              std::shared_ptr<void> owner);

    /// Shrinks the view to a part of itself.
    void narrow(long x, long y, long width, long height, std::size_t pelSize);

    /// The window's first pel; null when not bound.
    void* origin() const noexcept { return origin_; }

    /// Throw an mvExceptionWithString for a column or a row outside the window.
    void checkColumn(long x) const {
        if (x < 0 || x >= width_) throwOutside();
    }
    void checkRow(long y) const {
        if (y < 0 || y >= height_) throwOutside();
    }

  private:
    template <class T>
    friend void mfPelCopy(const mvPelBuffer_const<T>& src, mvPelBuffer<T>& dst);
    template <class T>
    friend void mfPelSet(mvPelBuffer<T>& dst, std::type_identity_t<T> value);

    // A property of the object, not of what it views: copies and assignments leave it alone.
    struct Access {
        constexpr Access() noexcept = default;
        constexpr Access(const Access&) noexcept {}
        constexpr Access& operator=(const Access&) noexcept { return *this; }
        bool writes = false;
    };

    void checkAccess(const mv_PelBuffer& other) const;
    void checkBound() const;
    static void copyPels(const mv_PelBuffer& src, const mv_PelBuffer& dst, std::size_t pelSize);
    [[noreturn]] static void throwOutside();
    void swap(mv_PelBuffer& other) noexcept;
    unsigned char* at(long x, long y, std::size_t pelSize) const noexcept;

    std::shared_ptr<void> owner_;
    void* origin_ = nullptr;
    long width_ = 0;
    long height_ = 0;
    long rowUpdate_ = 0;
    mvPair<std::int32_t> offset_;
    mv2XformCache xform_;
    Access access_;
};

/// A pel buffer whose pels are only read. T is any plain type whose zero bytes are its zero.
///
/// Assigning to an mvPelBuffer through a reference to this base would let it write pels that others
/// may only read: such an assignment throws an mvExceptionWithString and changes nothing.
template <class T>
class mvPelBuffer_const : public mv_PelBuffer {
    static_assert(std::is_trivially_copyable_v<T> && !std::is_const_v<T>);

  public:
    /// Not bound, at offset (0, 0), without a transform.
    mvPelBuffer_const() noexcept = default;

    /// A view of pels that stay where they are, rows `rowUpdate` pels apart; `owner` is kept alive
    /// by this view and its copies. Throws an mvExceptionWithString when `pels` is null, when a
    /// side is below 1 or above 2^31 - 1, when `rowUpdate` is below `width`, and when the view is
    /// larger than memory can be.
    mvPelBuffer_const(const T* pels, long width, long height, long rowUpdate,
                      std::shared_ptr<void> owner = {}) {
        this->bind(pels, width, height, rowUpdate, sizeof(T), std::move(owner));
    }

    /// The window's first pel; null when not bound.
    const T* pointToOffset() const noexcept { return static_cast<const T*>(this->origin()); }

    /// The first pel of row `y`, counted from the window's first row. A row outside the window
    /// throws an mvExceptionWithString.
    const T* pointToRow(long y) const {
        this->checkRow(y);
        return pointToOffset() + std::ptrdiff_t{y} * this->rowUpdate();
    }

    /// The pel in column `x` and row `y`, counted from the window's first pel. One outside the
    /// window throws an mvExceptionWithString.
    T pel(long x, long y) const {
        this->checkColumn(x);
        return pointToRow(y)[x];
    }

    /// A view of `width` by `height` pels of this view from column `x` and row `y` on, sharing its
    /// pels. Its offset is this view's plus (x, y), clamped to 32 bits; its transform is this
    /// view's. Throws an mvExceptionWithString when this view is not bound and when the window is
    /// empty or reaches outside of it.
    mvPelBuffer_const window(long x, long y, long width, long height) const {
        mvPelBuffer_const part(*this);
        part.narrow(x, y, width, height, sizeof(T));
        return part;
    }
};

/// A pel buffer whose pels can be written, also through a const view: constness is that of the
/// view, not of the pels.
template <class T>
class mvPelBuffer : public mvPelBuffer_const<T> {
  public:
    /// Not bound, at offset (0, 0), without a transform.
    mvPelBuffer() noexcept { this->grantWriting(); }

    /// New pels, all zero, whose rows start at multiples of `alignment` bytes. Throws an
    /// mvExceptionWithString when a side is below 1 or above 2^31 - 1, when `alignment` is no power
    /// of two from 1 to 65536, and when the pels are more than memory can be; std::bad_alloc when
    /// memory is short.
    mvPelBuffer(long width, long height, long alignment = 32) : mvPelBuffer() {
        this->allocate(width, height, alignment, sizeof(T));
    }

    /// A view of pels that stay where they are, as in mvPelBuffer_const.
    mvPelBuffer(T* pels, long width, long height, long rowUpdate, std::shared_ptr<void> owner = {})
        : mvPelBuffer_const<T>(pels, width, height, rowUpdate, std::move(owner)) {
        this->grantWriting();
    }

    /// A view of the same pels; moving leaves the source unbound.
    mvPelBuffer(const mvPelBuffer& other) noexcept : mvPelBuffer_const<T>(other) {
        this->grantWriting();
    }
    mvPelBuffer(mvPelBuffer&& other) noexcept : mvPelBuffer_const<T>(std::move(other)) {
        this->grantWriting();
    }
    mvPelBuffer& operator=(const mvPelBuffer&) noexcept = default;
    mvPelBuffer& operator=(mvPelBuffer&&) noexcept = default;
    ~mvPelBuffer() = default;

    /// As in mvPelBuffer_const.
    T* pointToOffset() const noexcept { return static_cast<T*>(this->origin()); }
    T* pointToRow(long y) const {
        this->checkRow(y);
        return pointToOffset() + std::ptrdiff_t{y} * this->rowUpdate();
    }
    mvPelBuffer window(long x, long y, long width, long height) const {
        mvPelBuffer part(*this);
        part.narrow(x, y, width, height, sizeof(T));
        return part;
    }
};

/// Copies pels from `src` to `dst` where the two windows overlap in image coordinates; windows that
/// do not meet copy nothing. Memory that both views share is handled as if the pels went through a
/// temporary. Offsets and transforms stay as they are. Throws an mvExceptionWithString when either
/// buffer is not bound (`src` is asked first); std::bad_alloc, before anything is copied, when
/// views of different row steps overlap in memory and there is no room for that temporary.
template <class T>
void mfPelCopy(const mvPelBuffer_const<T>& src, mvPelBuffer<T>& dst) {
    mv_PelBuffer::copyPels(src, dst, sizeof(T));
}

/// New pels with the values, the size, the offset and the transform of `src`; not bound when `src`
/// is not. Throws std::bad_alloc when memory is short.
template <class T>
[[nodiscard]] mvPelBuffer<T> mfPelClone(const mvPelBuffer_const<T>& src) {
    mvPelBuffer<T> clone;
    if (src.isBound()) clone = mvPelBuffer<T>(src.width(), src.height());
    clone.offset(src.offset());
    clone.copyXforms(src);
    if (src.isBound()) mfPelCopy(src, clone);
    return clone;
}

/// Sets every pel of the window to `value`. Throws an mvExceptionWithString when `dst` is not
/// bound.
template <class T>
void mfPelSet(mvPelBuffer<T>& dst, std::type_identity_t<T> value) {
    const mv_PelBuffer& view = dst;
    view.checkBound();
    for (long y = 0; y < dst.height(); ++y) std::fill_n(dst.pointToRow(y), dst.width(), value);
}

/// mfPelSet for 8-bit pels.
MVBASE_API void mfPelSet_U8(mvPelBuffer<unsigned char>& dst, unsigned char value);

/// Clamps `value` to the range from `low` to `high`; `low` when the range is empty.
constexpr int mfILimit(int value, int low, int high) noexcept {
    return value < low ? low : (value > high ? high : value);
}
