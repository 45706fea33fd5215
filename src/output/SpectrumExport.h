#pragma once

#include "spectrum/PostBaseLanes.h"
#include "walk/WalkEngine.h"

#include <QString>
#include <QVector>

#include <atomic>
#include <memory>
#include <mutex>

class SafeFile;

/// What a file of exported spectra holds of each position.
enum class SpectrumForm
{
    Normalized, ///< (mu - post) / (post - pre)
    RawXafs,    ///< mu
    Raw         ///< I1 counts of the block
};
constexpr int spectrumForms = 3;

/// The file that a form is written to: `fname` with the extension "dat" where it has none, and
/// behind its base name the form's own word ("norm", "rawxafs", "raw") when others are written too.
QString spectrumFileName(const QString& fname, SpectrumForm form, bool isOneOfSeveral);

/// What is written in front of the positions: the form, the area and its positions, the image and
/// the block.
QByteArray spectrumHeader(SpectrumForm form, const AnalyzeCond& area);

/// Makes the line of each position: "x y", the energy shift [eV] but for counts, and for each image
/// its energy [eV] and the value, 0 where there is none. Numbers have six digits, energies all.
class SpectrumTextKernel : public WalkKernel
{
public:
    explicit SpectrumTextKernel(SpectrumForm form);

    Stage stage() const override;
    int values() const override { return 0; }
    std::unique_ptr<WalkKernel> forWorker() const override;
    void plain(const PlainPosition& at, int lane, TileResult& out) override;
    Lanes lanes(const Tile& tile, TileResult& out) override;

private:
    void prepare(const TiffStack& stack, int count, TileResult& out);
    QByteArray line(const WalkSource& source, int x, int y, const double* values, int stride) const;
    Lanes curveLanes(const Tile& tile);
    void countLanes(const Tile& tile);

    const SpectrumForm form_;
    decltype(&lanes::sse2::postBaseLanes) postBase_;
    QVector<QByteArray> energies_; ///< of the images, with a blank on either side
    int energiesSize_ = 0;         ///< characters of all of them
    std::vector<double> values_;   ///< [energy][laneStride]
};

/// A file of spectra that a walk writes: whoever started the walk keeps it, and its sink fills it.
class SpectrumFile
{
public:
    /// Opens the file under a temporary name, and writes its header; why it could not stands in
    /// reason().
    SpectrumFile(const QString& fname, const QByteArray& header, qint64 positions);
    ~SpectrumFile();

    const QString& name() const { return name_; }
    /// Something could not be written: reason() says what, and no file will stand there. Any
    /// thread.
    bool hasFailed() const { return failed_; }
    const QString& reason() const { return reason_; }
    /// Nothing more is written, and what stood under the name stays; false when the file is whole
    /// already. Waits for what is being written. Any thread.
    bool cancel();

    /// The next positions. With the last one the file takes its name.
    void write(const std::vector<QByteArray>& lines);

private:
    void check(bool written);

    const QString name_;
    std::mutex mutex_;               ///< over all below
    std::unique_ptr<SafeFile> file_; ///< while it is written
    qint64 left_;                    ///< positions
    QByteArray buffer_;
    QString reason_;
    bool whole_ = false;
    std::atomic<bool> failed_{false};
};

class SpectrumTextSink : public WalkSink
{
public:
    explicit SpectrumTextSink(const std::shared_ptr<SpectrumFile>& file);
    Where where() const override { return Worker; }
    void take(const WalkRun& run, const TileResult& result) override;

private:
    const std::shared_ptr<SpectrumFile> file_;
};
