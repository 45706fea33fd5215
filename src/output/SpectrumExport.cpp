#include "output/SpectrumExport.h"

#include "common/FieldText.h"
#include "common/FileNames.h"
#include "common/GeneralText.h"
#include "common/LaneForms.h"
#include "common/SafeFile.h"

#include <QTextStream>

#include <cstring>

namespace {

struct FormTraits
{
    const char* firstLine;
    const char* word; ///< in file names
    Stage stage;
};

constexpr FormTraits traits[spectrumForms] = {
    {"# Morvenkite Save Normalized Xafs Spectra 1.0", "norm", Stage::Shown},
    {"# Morvenkite Save Raw Xafs Spectra 1.0", "rawxafs", Stage::Mu},
    {"# Morvenkite Save Raw Spectra 1.0", "raw", Stage::Counts}};

const FormTraits& traitsOf(SpectrumForm form)
{
    return traits[int(form)];
}

/// Longest "x y shift", with the line's end.
constexpr int longestHead = 2 * 12 + generalTextSize + 2;

char* writeText(const QByteArray& text, char* out)
{
    std::memcpy(out, text.constData(), std::size_t(text.size()));
    return out + text.size();
}

} // namespace

QString spectrumFileName(const QString& fname, SpectrumForm form, bool isOneOfSeveral)
{
    const QString named = withExtension(fname, QStringLiteral("dat"));
    return isOneOfSeveral ? addSuffix(named, QLatin1String(traitsOf(form).word)) : named;
}

QByteArray spectrumHeader(SpectrumForm form, const AnalyzeCond& area)
{
    QByteArray text;
    QTextStream out(&text);
    out << traitsOf(form).firstLine << '\n';
    out << "# X-Range (x0, x1), steps : " << area.x0 << ' ' << area.x1 << ' ' << area.columns()
        << '\n';
    out << "# Y-Range (y0, y1), steps : " << area.y0 << ' ' << area.y1 << ' ' << area.rows()
        << '\n';
    out << "# Full Width, Height      : " << area.width << ' ' << area.height << '\n';
    // The height first, against the words: deliberate, readers of the format count on it.
    out << "# Bin Half Width, Height  : " << area.halfY << ' ' << area.halfX << '\n';
    out << "# Step dX, dY             : " << area.stepX << ' ' << area.stepY << '\n';
    out << "# End of Header\n";
    out.flush();
    return text;
}

SpectrumTextKernel::SpectrumTextKernel(SpectrumForm form)
    : form_(form)
    , postBase_(LANE_FORM(postBaseLanes))
{
}

Stage SpectrumTextKernel::stage() const
{
    return traitsOf(form_).stage;
}

std::unique_ptr<WalkKernel> SpectrumTextKernel::forWorker() const
{
    return std::make_unique<SpectrumTextKernel>(form_);
}

void SpectrumTextKernel::prepare(const TiffStack& stack, int count, TileResult& out)
{
    if (out.texts.empty())
        out.texts.resize(std::size_t(count));
    if (!energies_.isEmpty())
        return;
    for (const SharedImage& image : stack) {
        energies_.append(' ' + energyText(image->energy).toLatin1() + ' ');
        energiesSize_ += energies_.last().size();
    }
    values_.resize(std::size_t(stack.size()) * laneStride);
}

/// `values` has one for each image, so far apart.
QByteArray SpectrumTextKernel::line(const WalkSource& source, int x, int y, const double* values,
                                    int stride) const
{
    const int longest = longestHead + energiesSize_ + energies_.size() * generalTextSize;
    QByteArray text(longest, Qt::Uninitialized);
    char* out = writeText(QByteArray::number(x) + ' ' + QByteArray::number(y), text.data());
    if (form_ != SpectrumForm::Raw) {
        *out++ = ' ';
        out = writeGeneral(source.shifts.at(x, y), out);
    }
    for (const QByteArray& energy : energies_) {
        out = writeGeneral(*values, writeText(energy, out));
        values += stride;
    }
    *out++ = '\n';
    text.truncate(int(out - text.constData()));
    return text;
}

void SpectrumTextKernel::plain(const PlainPosition& at, int lane, TileResult& out)
{
    prepare(at.source.i1, out.lanes, out);
    // Another kernel may have the position worked out beyond its counts.
    const Spectrum counts =
        form_ == SpectrumForm::Raw ? rawI1(at.source.i1, at.source.block, at.x, at.y) : Spectrum();
    const Spectrum& shown = form_ == SpectrumForm::Raw       ? counts
                            : form_ == SpectrumForm::RawXafs ? at.spectrum
                                                             : at.spectrum.doubleNormalizedPostBase;
    for (int i = 0; i < energies_.size(); ++i)
        values_[std::size_t(i)] = shown.y(i);
    out.texts[std::size_t(lane)] = line(at.source, at.x, at.y, values_.data(), 1);
}

Lanes SpectrumTextKernel::lanes(const Tile& tile, TileResult& out)
{
    prepare(tile.source.i1, out.lanes, out);
    if (tile.run.first.stepX < 1)
        return {};
    Lanes done;
    for (int lane = 0; lane < tile.count; ++lane)
        done.set(std::size_t(lane));
    const double* values = values_.data();
    if (form_ == SpectrumForm::Normalized)
        done = curveLanes(tile);
    else if (form_ == SpectrumForm::RawXafs)
        values = tile.mu;
    else
        countLanes(tile);
    AnalyzeCond at = tile.run.first;
    for (int lane = 0; lane < tile.count; ++lane, at.next()) {
        if (done[std::size_t(lane)])
            out.texts[std::size_t(lane)] =
                line(tile.source, at.cx, at.cy, values + lane, laneStride);
    }
    return done;
}

/// Positions with an edge; what the others have depends on how far their normalisation came.
Lanes SpectrumTextKernel::curveLanes(const Tile& tile)
{
    postBase_(tile.plan.task(), tile.edges, tile.mu, tile.count, values_.data());
    Lanes done;
    for (int lane = 0; lane < tile.count; ++lane) {
        done[std::size_t(lane)] =
            tile.edges.odd[lane] == 0 && Outcome(tile.edges.outcome[lane]) == Outcome::Fitted;
    }
    return done;
}

void SpectrumTextKernel::countLanes(const Tile& tile)
{
    const AnalyzeCond& at = tile.run.first;
    const BlockConditions& block = tile.source.block;
    double* sums = values_.data();
    for (const SharedImage& image : tile.source.i1) {
        image->blockSums(at.cx, at.stepX, tile.count, at.cy, block.halfX, block.halfY, sums);
        sums += laneStride;
    }
}

SpectrumFile::SpectrumFile(const QString& fname, const QByteArray& header, qint64 positions)
    : name_(fname)
    , file_(std::make_unique<SafeFile>(fname))
    , left_(positions)
{
    check(file_->open() && file_->write(header) == header.size());
}

SpectrumFile::~SpectrumFile() = default;

void SpectrumFile::check(bool written)
{
    if (written)
        return;
    reason_ = file_->reason();
    file_.reset();
    failed_ = true;
}

void SpectrumFile::write(const std::vector<QByteArray>& lines)
{
    const std::lock_guard<std::mutex> lock(mutex_);
    if (!file_)
        return;
    buffer_.clear();
    for (const QByteArray& line : lines)
        buffer_ += line;
    check(file_->write(buffer_) == buffer_.size());
    left_ -= qint64(lines.size());
    if (left_ > 0 || !file_)
        return;
    check(file_->commit());
    whole_ = !failed_;
    file_.reset();
}

bool SpectrumFile::cancel()
{
    const std::lock_guard<std::mutex> lock(mutex_);
    file_.reset();
    return !whole_;
}

SpectrumTextSink::SpectrumTextSink(const std::shared_ptr<SpectrumFile>& file)
    : file_(file)
{
}

void SpectrumTextSink::take(const WalkRun& /*run*/, const TileResult& result)
{
    file_->write(result.texts);
}
