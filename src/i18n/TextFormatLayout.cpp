#include "i18n/TextFormatLayout.h"

#include "core/Text.h"

#include <algorithm>
#include <charconv>
#include <cmath>
#include <optional>

namespace mw {

namespace {

enum class Align { Left, Centre, Right };

// Between a floating picture and the text beside it.
constexpr int kPictureGap = 4;
constexpr std::string_view kAppPath = "<app.path>";

// A table cell of the open row.
struct Cell {
    int Left = 0;
    int Right = 0;
    bool Border = true;
    int Bottom = 0; // the lowest line its text reached
};

// A whole number written with digits only.
std::optional<long long> Number(std::string_view text)
{
    long long value = 0;
    if (text.empty() || text.front() < '0' || text.front() > '9')
        return std::nullopt;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), value);
    if (error != std::errc() || end != text.data() + text.size())
        return std::nullopt;
    return value;
}

std::optional<int> SmallNumber(std::string_view text)
{
    const auto value = Number(text);
    if (!value || *value > 1'000'000)
        return std::nullopt;
    return static_cast<int>(*value);
}

// A line of width 1 is a hair line that takes no room.
int Room(int lineWidth) { return lineWidth > 1 ? lineWidth : 0; }

// What stands behind the "|" of a picture tag: "<w>x<h>", either number may be missing, and
// "r" or "c" at the end.
struct PictureSpec {
    std::optional<int> Width;
    std::optional<int> Height;
    Align Place = Align::Left;
};

std::optional<PictureSpec> ParsePictureSpec(std::string_view spec)
{
    PictureSpec result;
    if (!spec.empty() && (spec.back() == 'r' || spec.back() == 'c')) {
        result.Place = spec.back() == 'r' ? Align::Right : Align::Centre;
        spec.remove_suffix(1);
    }
    const auto x = spec.find('x');
    const std::string_view width = spec.substr(0, x);
    const std::string_view height = x == std::string_view::npos ? std::string_view() : spec.substr(x + 1);
    result.Width = SmallNumber(width);
    result.Height = SmallNumber(height);
    if ((!width.empty() && !result.Width) || (!height.empty() && !result.Height))
        return std::nullopt;
    return result;
}

// The file of a picture source; empty for a resource, which this program has none of.
std::string PictureFile(std::string_view source, const std::string& programFolder)
{
    if (StartsWithNoCase(source, "<r>"))
        return {};
    if (!StartsWithNoCase(source, kAppPath))
        return std::string(source);
    std::string rest(source.substr(kAppPath.size()));
    std::replace(rest.begin(), rest.end(), '\\', '/');
    const auto first = rest.find_first_not_of('/');
    return programFolder + "/" + (first == std::string::npos ? "" : rest.substr(first));
}

// The size a picture is shown at: a missing side follows the other in proportion.
PictureExtent ShownSize(const PictureSpec& spec, const PictureExtent& natural)
{
    const auto scaled = [](int side, int to, int from) {
        return from > 0 ? static_cast<int>(std::lround(double(side) * to / from)) : side;
    };
    if (spec.Width && spec.Height)
        return {*spec.Width, *spec.Height};
    if (spec.Width)
        return {*spec.Width, scaled(natural.Height, *spec.Width, natural.Width)};
    if (spec.Height)
        return {scaled(natural.Width, *spec.Height, natural.Height), *spec.Height};
    return natural;
}

class LayoutWalk {
public:
    LayoutWalk(const ParsedText& text, const TextFormatOptions& options, const TextMeasurer& measurer)
        : text_(text), options_(options), measurer_(measurer), font_(options.Font), color_(options.Color)
    {
    }

    TextLayout Run()
    {
        for (std::size_t i = 0; i < text_.Runs.size(); ++i) {
            const std::string& tag = text_.Runs[i].Tag;
            if (!tag.empty() && !Apply(tag))
                layout_.UnknownTags.push_back(tag);
            Print(i);
        }
        if (InCell())
            CloseCell();
        else if (!atLineStart_)
            NewLine(false);
        layout_.Height = TotalHeight();
        return std::move(layout_);
    }

private:
    bool Apply(const std::string& original)
    {
        const std::string tag = Lower(original);
        const std::string_view rest = std::string_view(tag).substr(1);
        switch (tag.front()) {
        case 'b':
            return Toggle(font_.Bold, rest);
        case 'i':
            return Toggle(font_.Italic, rest);
        case 'u':
            return Toggle(font_.Underline, rest);
        case 's':
            return Set(font_.Size, SmallNumber(rest));
        case 'c':
            if (const auto value = Number(rest)) {
                color_ = static_cast<std::uint32_t>(*value);
                return true;
            }
            return false;
        case 'f': {
            // Anything but a valid entry of the font table returns to the starting font.
            const auto index = SmallNumber(rest);
            font_.Font = index && *index <= options_.FontCount ? *index : 0;
            return true;
        }
        case 'l':
            return LineTag(rest);
        case 'm':
            return MarginTag(rest);
        case 'n':
            return Set(hang_, SmallNumber(rest));
        case 't':
            if (rest.empty() || rest == "2") {
                Bullet(rest == "2");
                return true;
            }
            return false;
        case 'w':
            if (rest.empty())
                ToggleLink();
            return rest.empty();
        case 'y':
            return MoveDown(rest);
        case 'a':
            return TableTag(rest);
        case 'g':
            return PictureTag(std::string_view(original).substr(1), rest);
        default:
            return false;
        }
    }

    static bool Toggle(bool& flag, std::string_view rest)
    {
        if (rest.empty())
            flag = !flag;
        return rest.empty();
    }

    static bool Set(int& target, std::optional<int> value)
    {
        if (value)
            target = *value;
        return value.has_value();
    }

    bool LineTag(std::string_view rest)
    {
        if (rest.empty()) {
            NewLine(false);
            hang_ = 0;
        } else if (rest == "gl") {
            align_ = Align::Left;
        } else if (rest == "gc") {
            align_ = Align::Centre;
        } else if (rest == "gr") {
            align_ = Align::Right;
        } else {
            return false;
        }
        return true;
    }

    bool MarginTag(std::string_view rest)
    {
        const char sign = rest.empty() ? 0 : rest.front();
        const auto value = SmallNumber(sign == '+' || sign == '-' ? rest.substr(1) : rest);
        if (!value)
            return false;
        margin_ = sign == '+' ? margin_ + *value : sign == '-' ? std::max(0, margin_ - *value) : *value;
        return true;
    }

    bool MoveDown(std::string_view rest)
    {
        const bool up = !rest.empty() && rest.front() == '-';
        const auto value = SmallNumber(up ? rest.substr(1) : rest);
        if (!value)
            return false;
        // What is on the line so far stays where it is; the rest goes on at the new height.
        PlaceLine();
        y_ += up ? -*value : *value;
        return true;
    }

    bool TableTag(std::string_view rest)
    {
        if (rest.starts_with("bc"))
            return Set(borderColor_, Number(rest.substr(2)));
        if (rest.starts_with("b")) {
            const auto x = rest.find('x');
            const auto outer = SmallNumber(rest.substr(1, x == std::string_view::npos ? x : x - 1));
            const auto inner = x == std::string_view::npos ? std::nullopt : SmallNumber(rest.substr(x + 1));
            if (!outer || !inner)
                return false;
            outer_ = *outer;
            inner_ = *inner;
            return true;
        }
        if (rest.starts_with("mt"))
            return Set(cellTopMargin_, SmallNumber(rest.substr(2)));
        if (rest.starts_with("m"))
            return Set(cellMargin_, SmallNumber(rest.substr(1)));

        const auto digits = std::min(rest.find_first_not_of("0123456789"), rest.size());
        const std::string_view suffix = rest.substr(digits);
        const auto value = SmallNumber(rest.substr(0, digits));
        if (!value || suffix.size() > 2 || suffix.find_first_not_of("fn") != std::string_view::npos)
            return false;
        if (*value == 0)
            EndRow();
        else
            StartCell(*value, suffix.find('f') != std::string_view::npos, suffix.find('n') == std::string_view::npos);
        return true;
    }

    static bool Set(std::uint32_t& target, std::optional<long long> value)
    {
        if (value)
            target = static_cast<std::uint32_t>(*value);
        return value.has_value();
    }

    // Pictures.

    // The file name keeps its case, so the tag comes as written and lowered.
    bool PictureTag(std::string_view tag, std::string_view lower)
    {
        if (lower == "a" || lower == "n") {
            floating_ = lower == "a";
            return true;
        }
        if (lower == "r") {
            ReturnBelowPicture();
            return true;
        }
        const auto bar = tag.rfind('|');
        const std::string_view source = tag.substr(0, bar);
        const auto spec = ParsePictureSpec(bar == std::string_view::npos ? "" : lower.substr(bar + 1));
        if (source.empty() || !spec)
            return false;
        std::string file = PictureFile(source, options_.ProgramFolder);
        const auto natural = file.empty() ? std::nullopt : measurer_.PictureSize(file);
        if (!natural)
            return false;
        const PictureExtent size = ShownSize(*spec, *natural);
        if (spec->Place == Align::Centre || (spec->Place == Align::Right && !Floats()))
            PlaceOnOwnLine(std::move(file), size, spec->Place);
        else if (Floats())
            Float(std::move(file), size, spec->Place == Align::Right);
        else
            PlaceInLine(std::move(file), size);
        return true;
    }

    bool Floats() const { return floating_ && !InCell(); }

    // Like a tall letter: on the base line, and the line grows to its height.
    void PlaceInLine(std::string file, const PictureExtent& size)
    {
        if (!atLineStart_ && x_ + size.Width > RightEdge())
            NewLine(true);
        inLinePictures_.push_back(layout_.Pictures.size());
        layout_.Pictures.push_back({{x_, -size.Height, size.Width, size.Height}, std::move(file)});
        x_ += size.Width;
        TakeFont();
        lineAscent_ = std::max(lineAscent_, size.Height);
    }

    void PlaceOnOwnLine(std::string file, const PictureExtent& size, Align place)
    {
        if (!atLineStart_)
            NewLine(false);
        const int left = LineLeft();
        const int free = std::max(0, RightEdge() - left - size.Width);
        const TextRect box{left + (place == Align::Right ? free : free / 2), y_, size.Width, size.Height};
        layout_.Pictures.push_back({box, std::move(file)});
        y_ = box.Bottom();
        if (InCell())
            row_.back().Bottom = std::max(row_.back().Bottom, y_);
        x_ = LineLeft();
    }

    // At the top of this line while it is empty, else of the next one.
    void Float(std::string file, const PictureExtent& size, bool right)
    {
        waitingFloats_.push_back({{{0, 0, size.Width, size.Height}, std::move(file)}, right});
        if (atLineStart_) {
            const int indent = x_ - LineLeft();
            PlaceWaitingFloats();
            x_ = LineLeft() + indent;
        }
    }

    void PlaceWaitingFloats()
    {
        for (FloatingPicture& waiting : waitingFloats_) {
            waiting.Picture.Box.Left = waiting.Right ? RightEdge() - waiting.Picture.Box.Width : LineLeft();
            waiting.Picture.Box.Top = y_;
            layout_.Pictures.push_back(waiting.Picture);
            floats_.push_back({waiting.Picture.Box, waiting.Right});
        }
        waitingFloats_.clear();
    }

    void ReturnBelowPicture()
    {
        if (!atLineStart_)
            NewLine(false);
        if (!layout_.Pictures.empty())
            y_ = std::max(y_, layout_.Pictures.back().Box.Bottom());
        x_ = LineLeft();
    }

    // Text, word by word.

    void Print(std::size_t run)
    {
        const TextRun& r = text_.Runs[run];
        std::vector<std::size_t> positions;
        const std::string shown = Unescape(text_, r.First, r.Last + 1, &positions);
        for (std::size_t at = 0; at < shown.size();) {
            const bool blank = shown[at] == ' ';
            const std::size_t end = std::min(blank ? shown.find_first_not_of(' ', at) : shown.find(' ', at), shown.size());
            if (blank)
                PrintBlank(run, shown, positions, at, end);
            else
                PrintWord(run, shown, positions, at, end);
            at = end;
        }
    }

    void PrintBlank(std::size_t run, const std::string& shown, const std::vector<std::size_t>& positions,
                    std::size_t from, std::size_t to)
    {
        if (atLineStart_)
            return;
        const int width = measurer_.TextWidth(font_, std::string_view(shown).substr(from, to - from));
        if (x_ + width > RightEdge())
            NewLine(true); // and the blank is dropped at the start of the new line
        else
            Add(run, shown, positions, from, to, width);
    }

    void PrintWord(std::size_t run, const std::string& shown, const std::vector<std::size_t>& positions,
                   std::size_t from, std::size_t to)
    {
        while (from < to) {
            const std::string_view word = std::string_view(shown).substr(from, to - from);
            const int width = measurer_.TextWidth(font_, word);
            if (x_ + width <= RightEdge()) {
                Add(run, shown, positions, from, to, width);
                return;
            }
            if (!atLineStart_) {
                NewLine(true);
                continue;
            }
            // Longer than a whole line: as much as fits, and at least one character.
            std::size_t cut = NextCharacter(word, 0);
            while (cut < word.size()) {
                const std::size_t next = NextCharacter(word, cut);
                if (x_ + measurer_.TextWidth(font_, word.substr(0, next)) > RightEdge())
                    break;
                cut = next;
            }
            Add(run, shown, positions, from, from + cut, measurer_.TextWidth(font_, word.substr(0, cut)));
            NewLine(true);
            from += cut;
        }
    }

    void Add(std::size_t run, const std::string& shown, const std::vector<std::size_t>& positions, std::size_t from,
             std::size_t to, int width)
    {
        const std::string part = shown.substr(from, to - from);
        const auto firstPosition = positions.begin() + static_cast<std::ptrdiff_t>(from);
        const auto endPosition = positions.begin() + static_cast<std::ptrdiff_t>(to) + 1;
        if (PendingPieces() && layout_.Pieces.back().Run == run && layout_.Pieces.back().Box.Right() == x_) {
            TextPiece& piece = layout_.Pieces.back();
            piece.Text += part;
            piece.Box.Width += width;
            piece.Positions.pop_back();
            piece.Positions.insert(piece.Positions.end(), firstPosition, endPosition);
        } else {
            TextPiece piece;
            piece.Box = {x_, 0, width, 0};
            piece.Y = -measurer_.Ascent(font_); // from the base line until the line is placed
            piece.Text = part;
            piece.Font = font_;
            piece.Color = color_;
            piece.Run = run;
            piece.Link = link_;
            piece.Positions.assign(firstPosition, endPosition);
            layout_.Pieces.push_back(std::move(piece));
        }
        if (link_ >= 0)
            layout_.Links[static_cast<std::size_t>(link_)].Target += part;
        x_ += width;
        TakeFont();
    }

    void Bullet(bool square)
    {
        const int ascent = measurer_.Ascent(font_);
        const int size = std::max(3, ascent / 2);
        // Centred on the letters' height, relative to the base line until the line is placed.
        layout_.Shapes.push_back({{x_, -(ascent + size) / 2, size, size}, color_, !square});
        x_ += size * 3 / 2;
        TakeFont();
    }

    void ToggleLink()
    {
        if (link_ >= 0) {
            link_ = -1;
            color_ = colorBeforeLink_;
            return;
        }
        colorBeforeLink_ = color_;
        color_ = kLinkColor;
        link_ = static_cast<int>(layout_.Links.size());
        layout_.Links.emplace_back();
    }

    // Lines.

    void TakeFont()
    {
        const int ascent = measurer_.Ascent(font_);
        lineAscent_ = std::max(lineAscent_, ascent);
        lineDescent_ = std::max(lineDescent_, measurer_.Height(font_) - ascent);
        atLineStart_ = false;
    }

    bool PendingPieces() const { return layout_.Pieces.size() > linePieces_; }
    bool Pending() const
    {
        return PendingPieces() || layout_.Shapes.size() > lineShapes_ || !inLinePictures_.empty();
    }

    // Puts the pending items of the line on a common base line at the current height, aligned,
    // and returns the line's height: that of the tallest font on it.
    int PlaceLine()
    {
        if (!Pending()) {
            lineAscent_ = measurer_.Ascent(font_);
            lineDescent_ = measurer_.Height(font_) - lineAscent_;
        }
        const int height = lineAscent_ + lineDescent_;
        const int baseLine = y_ + lineAscent_;
        const int shift = AlignShift();
        int lastLink = -1;
        for (std::size_t i = linePieces_; i < layout_.Pieces.size(); ++i) {
            TextPiece& piece = layout_.Pieces[i];
            piece.Box.Left += shift;
            piece.Box.Top = y_;
            piece.Box.Height = height;
            piece.Y += baseLine;
            if (piece.Link >= 0) {
                auto& rects = layout_.Links[static_cast<std::size_t>(piece.Link)].Rects;
                if (piece.Link == lastLink)
                    rects.back().Width = piece.Box.Right() - rects.back().Left;
                else
                    rects.push_back(piece.Box);
            }
            lastLink = piece.Link;
        }
        for (std::size_t i = lineShapes_; i < layout_.Shapes.size(); ++i) {
            layout_.Shapes[i].Box.Left += shift;
            layout_.Shapes[i].Box.Top += baseLine;
        }
        for (const std::size_t i : inLinePictures_) {
            layout_.Pictures[i].Box.Left += shift;
            layout_.Pictures[i].Box.Top += baseLine;
        }
        inLinePictures_.clear();
        linePieces_ = layout_.Pieces.size();
        lineShapes_ = layout_.Shapes.size();
        lineAscent_ = 0;
        lineDescent_ = 0;
        return height;
    }

    int AlignShift() const
    {
        if (align_ == Align::Left || !Pending())
            return 0;
        int end = x_;
        if (PendingPieces() && layout_.Pieces.back().Box.Right() == x_) {
            // Blanks at the end of the line don't count.
            const TextPiece& last = layout_.Pieces.back();
            const auto kept = last.Text.find_last_not_of(' ');
            const std::size_t from = kept == std::string::npos ? 0 : kept + 1;
            end -= measurer_.TextWidth(last.Font, std::string_view(last.Text).substr(from));
        }
        const int free = std::max(0, RightEdge() - end);
        return align_ == Align::Right ? free : free / 2;
    }

    void NewLine(bool wrapped)
    {
        y_ += PlaceLine();
        if (InCell())
            row_.back().Bottom = std::max(row_.back().Bottom, y_);
        PlaceWaitingFloats();
        x_ = LineLeft() + (wrapped ? hang_ : 0);
        atLineStart_ = true;
    }

    // The edges of the current line: those of the cell, or of the surface less the floating
    // pictures beside the line.
    int LineLeft() const
    {
        if (InCell())
            return row_.back().Left + Inset(row_.back());
        int left = margin_;
        for (const auto& f : floats_) {
            if (!f.Right && y_ < f.Box.Bottom())
                left = std::max(left, f.Box.Right() + kPictureGap);
        }
        return left;
    }
    int RightEdge() const
    {
        if (InCell())
            return row_.back().Right - Inset(row_.back());
        int right = options_.Width - options_.RightMargin;
        for (const auto& f : floats_) {
            if (f.Right && y_ < f.Box.Bottom())
                right = std::min(right, f.Box.Left - kPictureGap);
        }
        return right;
    }

    // Tables.

    bool InCell() const { return !row_.empty(); }
    int BorderRoom(const Cell& cell) const { return cell.Border ? Room(std::max(outer_, inner_)) : 0; }
    int Inset(const Cell& cell) const { return cellMargin_ + BorderRoom(cell); }

    void StartCell(int size, bool fixed, bool border)
    {
        if (InCell()) {
            CloseCell();
        } else {
            if (!atLineStart_)
                NewLine(false);
            rowTop_ = y_;
        }
        const int left = InCell() ? row_.back().Right : margin_;
        const int surfaceRight = options_.Width - options_.RightMargin;
        const int width = fixed ? size : static_cast<int>(std::lround(size * (surfaceRight - left) / 100.0));
        Cell cell{left, std::max(left, std::min(left + width, surfaceRight)), border, 0};
        y_ = rowTop_ + cellTopMargin_ + BorderRoom(cell);
        cell.Bottom = y_;
        row_.push_back(cell);
        x_ = LineLeft();
        atLineStart_ = true;
    }

    void CloseCell()
    {
        if (!atLineStart_)
            NewLine(false);
        row_.back().Bottom = std::max(row_.back().Bottom, y_);
    }

    void EndRow()
    {
        if (!InCell())
            return;
        CloseCell();
        int bottom = rowTop_;
        for (const Cell& cell : row_)
            bottom = std::max(bottom, cell.Bottom + Inset(cell));
        for (std::size_t i = 0; i < row_.size(); ++i) {
            const Cell& cell = row_[i];
            const TextRect box{cell.Left, rowTop_, cell.Right - cell.Left, bottom - rowTop_};
            layout_.Cells.push_back({box, cell.Border});
            if (!cell.Border)
                continue;
            const bool last = i + 1 == row_.size();
            // Each line between two cells is drawn once, by the cell on its right.
            const bool rightLine = last || !row_[i + 1].Border;
            DrawBorder(box, i == 0 ? outer_ : inner_, rightLine ? (last ? outer_ : inner_) : 0);
        }
        row_.clear();
        y_ = bottom;
        x_ = LineLeft();
        atLineStart_ = true;
    }

    void DrawBorder(const TextRect& box, int left, int right)
    {
        const TextRect lines[] = {
            {box.Left, box.Top, box.Width, outer_},
            {box.Left, box.Bottom() - outer_, box.Width, outer_},
            {box.Left, box.Top, left, box.Height},
            {box.Right() - right, box.Top, right, box.Height},
        };
        for (const TextRect& line : lines) {
            if (line.Width > 0 && line.Height > 0)
                layout_.Shapes.push_back({line, borderColor_, false});
        }
    }

    int TotalHeight() const
    {
        int height = y_;
        for (const TextPiece& piece : layout_.Pieces)
            height = std::max(height, piece.Box.Bottom());
        for (const FilledShape& shape : layout_.Shapes)
            height = std::max(height, shape.Box.Bottom());
        for (const Cell& cell : row_)
            height = std::max(height, cell.Bottom + Inset(cell));
        for (const TextPicture& picture : layout_.Pictures)
            height = std::max(height, picture.Box.Bottom());
        return height;
    }

    const ParsedText& text_;
    const TextFormatOptions& options_;
    const TextMeasurer& measurer_;
    TextLayout layout_;

    FontState font_;
    std::uint32_t color_ = 0;
    std::uint32_t colorBeforeLink_ = 0;
    int link_ = -1;

    int x_ = 0;
    int y_ = 0;
    int margin_ = 0;
    int hang_ = 0;
    Align align_ = Align::Left;
    bool atLineStart_ = true;
    std::size_t linePieces_ = 0; // the items from here on are on the line not yet placed
    std::size_t lineShapes_ = 0;
    int lineAscent_ = 0;
    int lineDescent_ = 0;

    struct FloatBox {
        TextRect Box;
        bool Right = false;
    };
    struct FloatingPicture {
        TextPicture Picture;
        bool Right = false;
    };
    bool floating_ = false;
    std::vector<std::size_t> inLinePictures_; // on the line not yet placed
    std::vector<FloatingPicture> waitingFloats_; // for the top of the next line
    std::vector<FloatBox> floats_;

    std::vector<Cell> row_;
    int rowTop_ = 0;
    int cellMargin_ = 0;
    int cellTopMargin_ = 0;
    int outer_ = 1;
    int inner_ = 1;
    std::uint32_t borderColor_ = 0;
};

} // namespace

TextLayout LayoutTextFormat(const ParsedText& text, const TextFormatOptions& options, const TextMeasurer& measurer)
{
    return LayoutWalk(text, options, measurer).Run();
}

} // namespace mw
