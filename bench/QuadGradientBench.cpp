// A four-corner gradient over 1,920 x 1,080 pixels, beside filling the same memory with one byte and beside
// cairo's mesh gradient, which draws the same fan of four triangles.
#include "color/QuadGradient.h"

#include <benchmark/benchmark.h>
#include <cairo/cairo.h>
#include <cstdlib>
#include <cstring>
#include <memory>
#include <vector>

namespace {

constexpr int kWidth = 1920;
constexpr int kHeight = 1080;
constexpr std::size_t kPixels = std::size_t{kWidth} * kHeight;
// Together larger than any last-level cache that we know.
constexpr int kBuffers = 32;

constexpr kv::QuadColours kOpaque{0xFFFF0000u, 0xFF00FF00u, 0xFF0000FFu, 0xFFFFC0FFu};
constexpr kv::QuadColours kTranslucent{0x80FF0000u, 0xFF00FF00u, 0x400000FFu, 0xFFFFC0FFu};

/// Pictures that are taken in turn.
class Buffers
{
public:
    explicit Buffers(int count)
        : m_bits(kPixels * static_cast<std::size_t>(count), 0xFF808080u)
        , m_count(count)
    {
    }

    std::uint32_t* Next()
    {
        m_next = (m_next + 1) % m_count;
        return m_bits.data() + kPixels * static_cast<std::size_t>(m_next);
    }

private:
    std::vector<std::uint32_t> m_bits;
    int m_count;
    int m_next = 0;
};

void Fill(std::uint32_t* bits, kv::PixelFormat format, const kv::QuadColours& corners)
{
    kv::FillQuadGradient({bits, kWidth, kHeight, kWidth}, format, kv::DeviceGrid(1), {0, 0, kWidth, kHeight},
                         corners);
}

void AddCorner(cairo_pattern_t* mesh, unsigned corner, std::uint32_t colour)
{
    const auto channel = [colour](int shift) { return (colour >> shift & 0xFFu) / 255.0; };
    cairo_mesh_pattern_set_corner_color_rgba(mesh, corner, channel(16), channel(8), channel(0), channel(24));
}

cairo_pattern_t* MakeMesh(const kv::QuadColours& corners)
{
    struct Point
    {
        double x;
        double y;
        std::uint32_t colour;
    };
    const Point around[] = {
        {0, 0, corners[0]}, {kWidth, 0, corners[1]}, {kWidth, kHeight, corners[3]}, {0, kHeight, corners[2]}};
    cairo_pattern_t* const mesh = cairo_pattern_create_mesh();
    for (int side = 0; side < 4; ++side) {
        const Point& a = around[side];
        const Point& b = around[(side + 1) % 4];
        cairo_mesh_pattern_begin_patch(mesh);
        cairo_mesh_pattern_move_to(mesh, a.x, a.y);
        cairo_mesh_pattern_line_to(mesh, b.x, b.y);
        cairo_mesh_pattern_line_to(mesh, kWidth / 2.0, kHeight / 2.0);
        AddCorner(mesh, 0, a.colour);
        AddCorner(mesh, 1, b.colour);
        AddCorner(mesh, 2, kv::QuadCentre(corners));
        cairo_mesh_pattern_end_patch(mesh);
    }
    return mesh;
}

class MeshPeer
{
public:
    MeshPeer(std::uint32_t* bits, cairo_format_t format)
        : m_surface(cairo_image_surface_create_for_data(reinterpret_cast<unsigned char*>(bits), format,
                                                        kWidth, kHeight, 4 * kWidth))
        , m_cairo(cairo_create(m_surface))
    {
    }
    ~MeshPeer()
    {
        cairo_destroy(m_cairo);
        cairo_surface_destroy(m_surface);
    }
    MeshPeer(const MeshPeer&) = delete;
    MeshPeer& operator=(const MeshPeer&) = delete;

    void Draw(const kv::QuadColours& corners)
    {
        cairo_pattern_t* const mesh = MakeMesh(corners);
        cairo_set_source(m_cairo, mesh);
        cairo_paint(m_cairo);
        cairo_surface_flush(m_surface);
        cairo_pattern_destroy(mesh);
    }

private:
    cairo_surface_t* m_surface;
    cairo_t* m_cairo;
};

// The peer draws by patches of a few pixels, so it is only near.
bool PicturesAgree(const kv::QuadColours& corners)
{
    Buffers ours(1);
    Buffers theirs(1);
    std::uint32_t* const a = ours.Next();
    std::uint32_t* const b = theirs.Next();
    Fill(a, kv::PixelFormat::Rgb32, corners);
    MeshPeer(b, CAIRO_FORMAT_RGB24).Draw(corners);
    for (std::size_t i = 0; i < kPixels; i += 97) {
        for (const int shift : {0, 8, 16}) {
            if (std::abs(static_cast<int>(a[i] >> shift & 0xFF) - static_cast<int>(b[i] >> shift & 0xFF)) > 4)
                return false;
        }
    }
    return true;
}

void Ours(benchmark::State& state, kv::PixelFormat format, const kv::QuadColours& corners)
{
    if (!PicturesAgree(corners)) {
        state.SkipWithError("the two pictures differ");
        return;
    }
    Buffers buffers(static_cast<int>(state.range(0)));
    for (auto _ : state) {
        Fill(buffers.Next(), format, corners);
        benchmark::ClobberMemory();
    }
}
BENCHMARK_CAPTURE(Ours, Opaque, kv::PixelFormat::Rgb32, kOpaque)->Arg(1)->Arg(kBuffers);
BENCHMARK_CAPTURE(Ours, Translucent, kv::PixelFormat::Argb32Premultiplied, kTranslucent)
    ->Arg(1)
    ->Arg(kBuffers);
BENCHMARK_CAPTURE(Ours, TranslucentStraight, kv::PixelFormat::Argb32, kTranslucent)->Arg(1);

void PeerMemset(benchmark::State& state)
{
    Buffers buffers(static_cast<int>(state.range(0)));
    int value = 0;
    for (auto _ : state) {
        std::memset(buffers.Next(), ++value, kPixels * 4);
        benchmark::ClobberMemory();
    }
}
BENCHMARK(PeerMemset)->Arg(1)->Arg(kBuffers);

void PeerMesh(benchmark::State& state, cairo_format_t format, const kv::QuadColours& corners)
{
    Buffers buffers(1);
    MeshPeer peer(buffers.Next(), format);
    for (auto _ : state)
        peer.Draw(corners);
}
BENCHMARK_CAPTURE(PeerMesh, Opaque, CAIRO_FORMAT_RGB24, kOpaque);
BENCHMARK_CAPTURE(PeerMesh, Translucent, CAIRO_FORMAT_ARGB32, kTranslucent); // premultiplied

} // namespace
