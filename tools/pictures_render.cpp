#include "pictures_render.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>

namespace morva::pictures {
namespace {

constexpr float kFar = 40.0f;
constexpr unsigned kLightSquare = 0xc4ae8a;
constexpr unsigned kDarkSquare = 0x86694a;

Vec operator+(Vec a, Vec b) { return {a.x + b.x, a.y + b.y, a.z + b.z}; }
Vec operator-(Vec a, Vec b) { return {a.x - b.x, a.y - b.y, a.z - b.z}; }
Vec operator*(Vec a, float k) { return {a.x * k, a.y * k, a.z * k}; }
Vec operator*(Vec a, Vec b) { return {a.x * b.x, a.y * b.y, a.z * b.z}; }
float dot(Vec a, Vec b) { return a.x * b.x + a.y * b.y + a.z * b.z; }
Vec cross(Vec a, Vec b) { return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x}; }
Vec normal(Vec a) { return a * (1 / std::sqrt(dot(a, a))); }
Vec mix(Vec a, Vec b, float t) { return a * (1 - t) + b * t; }
float length(float x, float y) { return std::sqrt(x * x + y * y); }
float clamp01(float v) { return std::clamp(v, 0.0f, 1.0f); }
float smooth(float from, float to, float v) {
  const float t = clamp01((v - from) / (to - from));
  return t * t * (3 - 2 * t);
}

// A value between 0 and 1 that looks random and is the same on every run.
float hash(int x, int y, int seed = 0) {
  unsigned h = unsigned(x) * 374761393u + unsigned(y) * 668265263u + unsigned(seed) * 2246822519u;
  h = (h ^ (h >> 13)) * 1274126177u;
  return float((h ^ (h >> 16)) & 0xffffff) / float(0x1000000);
}

float noise(float x, float y, int seed) {
  const int ix = int(std::floor(x)), iy = int(std::floor(y));
  const float fx = smooth(0, 1, x - float(ix)), fy = smooth(0, 1, y - float(iy));
  const float top = std::lerp(hash(ix, iy, seed), hash(ix + 1, iy, seed), fx);
  const float bottom = std::lerp(hash(ix, iy + 1, seed), hash(ix + 1, iy + 1, seed), fx);
  return std::lerp(top, bottom, fy);
}

// Wood as it lies in one square: long fibres, their direction changing with the colour.
Vec board_colour(const Scene& scene, float x, float z) {
  x += scene.board_shift_x;
  z += scene.board_shift_z;
  const int column = int(std::floor(x)), row = int(std::floor(z));
  const bool light = ((column + row) & 1) == 0;
  const Vec base = linear(light ? kLightSquare : kDarkSquare);
  const float along = light ? x : z, across = light ? z : x;
  const int seed = column * 31 + row * 57;
  const float bend = noise(along * 1.3f, across * 1.5f, seed) * 0.5f;
  const float fibre = noise(along * 1.6f, (across + bend) * 11, seed) * 0.6f +
                      noise(along * 3.0f, (across + bend) * 38, seed + 1) * 0.4f;
  const float edge = std::min({x - float(column), float(column + 1) - x, z - float(row), float(row + 1) - z});
  const float joint = std::lerp(0.62f, 1.0f, smooth(0.0f, 0.014f, edge));
  const float tone = 0.94f + 0.12f * hash(column, row, 9);
  return base * ((0.84f + 0.32f * fibre) * joint * tone);
}

class Stage {
 public:
  explicit Stage(const Scene& scene) : scene_(scene) {
    for (const Piece& piece : scene.pieces) {
      QRectF box;
      if (piece.form.turned) {
        QRectF turned = piece.form.turned->box();
        turned.setLeft(-turned.right());
        box |= turned;
      }
      if (piece.form.carved) box |= piece.form.carved->box();
      const float radius = float(std::max(-box.left(), box.right()));
      const Vec middle = piece.place + Vec{0, float(box.center().y()), 0};
      posts_.push_back(
          {middle, std::hypot(radius, float(box.height()) / 2), std::cos(piece.turn), std::sin(piece.turn)});
    }
  }

  Vec look(Vec from, Vec along) const { return shade(from, along, trace(from, along), false); }

 private:
  struct Hit {
    float distance = kFar;
    int piece = -1;  // -1 is the board, when `distance` is less than kFar
  };

  struct Post {
    Vec middle;
    float radius, cosine, sine;
  };

  Hit trace(Vec from, Vec along) const {
    Hit hit;
    if (along.y < -1e-5f) hit.distance = std::min(kFar, -from.y / along.y);
    for (size_t i = 0; i < posts_.size(); ++i) {
      float enter, leave;
      if (!crosses(i, from, along, enter, leave)) continue;
      leave = std::min(leave, hit.distance);
      for (float t = enter; t < leave;) {
        const float d = distance(i, from + along * t);
        if (d < 0.0006f * t) {
          hit = {t, int(i)};
          break;
        }
        t += d * 0.85f;
      }
    }
    return hit;
  }

  // How much of the lamp a point sees, from 0 to 1, with a penumbra that widens with the distance.
  float light(Vec from, Vec along, float reach) const {
    float seen = 1;
    for (size_t i = 0; i < posts_.size(); ++i) {
      float enter, leave;
      if (!crosses(i, from, along, enter, leave, 0.25f)) continue;
      leave = std::min(leave, reach);
      for (float t = std::max(enter, 0.02f); t < leave;) {
        const float d = distance(i, from + along * t);
        seen = std::min(seen, 0.5f + 4.5f * d / t);
        if (seen <= 0) return 0;
        t += std::clamp(std::abs(d) * 0.8f, 0.012f, 0.3f);
      }
    }
    return smooth(0, 1, seen);
  }

  float nearest(Vec p) const {
    float d = p.y;
    for (size_t i = 0; i < posts_.size(); ++i) {
      const Vec gap = p - posts_[i].middle;
      if (dot(gap, gap) < (posts_[i].radius + 0.5f) * (posts_[i].radius + 0.5f)) d = std::min(d, distance(i, p));
    }
    return d;
  }

  // How open the surroundings of a point are, from 0 (in a crevice) to 1.
  float openness(Vec p, Vec n) const {
    float shut = 0, weight = 1;
    for (int i = 1; i <= 5; ++i) {
      const float reach = 0.015f + 0.075f * float(i * i) / 4;
      shut += weight * std::max(0.0f, reach - nearest(p + n * reach)) / reach;
      weight *= 0.72f;
    }
    return clamp01(1 - 0.42f * shut);
  }

  Vec facing(int piece, Vec p) const {
    constexpr float e = 0.004f;
    const size_t i = size_t(piece);
    return normal({distance(i, p + Vec{e, 0, 0}) - distance(i, p - Vec{e, 0, 0}),
                   distance(i, p + Vec{0, e, 0}) - distance(i, p - Vec{0, e, 0}),
                   distance(i, p + Vec{0, 0, e}) - distance(i, p - Vec{0, 0, e})});
  }

  Vec shade(Vec from, Vec along, const Hit& hit, bool mirrored) const {
    if (hit.distance >= kFar) return wall(along);
    const Vec p = from + along * hit.distance;
    const bool board = hit.piece < 0;
    const Vec n = board ? Vec{0, 1, 0} : facing(hit.piece, p);
    const Material wood{board_colour(scene_, p.x, p.z), 0.10f, 24};
    const Material& material = board ? wood : scene_.pieces[size_t(hit.piece)].material;

    const Vec to_lamp = scene_.lamp - p;
    const float reach = std::sqrt(dot(to_lamp, to_lamp));
    const Vec l = to_lamp * (1 / reach);
    const Vec start = p + n * 0.012f;
    const float lit = std::max(0.0f, dot(n, l));
    const Vec lamp = scene_.lamp_colour * (in_pool(p) / (reach * reach));
    const float seen = lit > 0 ? light(start, l, reach) : 0;
    const float open = mirrored ? 0.7f : openness(p, n);

    const Vec half = normal(l - along);
    const float shine = material.gloss * std::pow(std::max(0.0f, dot(n, half)), material.sharp) * seen;
    // Light that the lit board throws back up, on what hangs over it.
    const Vec bounce = scene_.lamp_colour * Vec{0.0030f, 0.0021f, 0.0012f} * (0.5f - 0.5f * n.y) * in_pool(p);
    Vec out = material.colour * (lamp * (lit * seen) + (scene_.sky * (0.65f + 0.35f * n.y) + bounce) * open);
    out = out + lamp * shine;

    const Vec behind = normal(scene_.rim_from);
    if (!board) {
      const float edge = std::pow(clamp01(1 + dot(n, along)), 2.5f) * std::max(0.0f, dot(n, behind));
      out = out + scene_.rim * ((0.25f * material.gloss + 0.1f) * edge * open) +
            scene_.rim * material.colour * (0.35f * std::max(0.0f, dot(n, behind)) * open);
    }
    if (board && !mirrored) {
      const Vec back = along - n * (2 * dot(along, n));
      const float grazing = std::pow(1 - std::abs(dot(along, n)), 5.0f);
      const Hit image = trace(start, back);
      if (image.piece >= 0) out = mix(out, shade(start, back, image, true), 0.05f + 0.45f * grazing);
    }
    const float far = smooth(scene_.focus * 1.1f, scene_.focus * 2.6f, hit.distance);
    return mix(out, wall(along), far);
  }

  Vec wall(Vec along) const {
    const Vec middle = normal(scene_.glow_at - scene_.eye);
    const Vec aside = cross(along, middle);
    return scene_.haze + scene_.glow * std::exp(-dot(aside, aside) / (scene_.glow_width * scene_.glow_width));
  }

  float in_pool(Vec p) const {
    return 1 / (1 + std::pow(length(p.x - scene_.lamp_aim.x, p.z - scene_.lamp_aim.z) / scene_.pool, 4.0f));
  }

  bool crosses(size_t i, Vec from, Vec along, float& enter, float& leave, float more = 0) const {
    const Vec gap = posts_[i].middle - from;
    const float radius = posts_[i].radius + more;
    const float middle = dot(gap, along);
    const float miss = dot(gap, gap) - middle * middle;
    if (miss > radius * radius) return false;
    const float half = std::sqrt(radius * radius - miss);
    enter = std::max(0.0f, middle - half);
    leave = middle + half;
    return leave > 0;
  }

  float distance(size_t i, Vec p) const {
    const Piece& piece = scene_.pieces[i];
    p = p - piece.place;
    p = {p.x * posts_[i].cosine + p.z * posts_[i].sine, p.y, p.z * posts_[i].cosine - p.x * posts_[i].sine};
    const Form& form = piece.form;
    float d = form.turned ? form.turned->at(length(p.x, p.z), p.y) : kFar;
    if (!form.carved) return d;
    const float flat = form.carved->at(p.x, p.y) + form.round;
    const float deep = std::abs(p.z) - form.half_depth + form.taper * p.y + form.round;
    float carved =
        length(std::max(flat, 0.0f), std::max(deep, 0.0f)) + std::min(std::max(flat, deep), 0.0f) - form.round;
    if (form.engraved && carved < 0.1f) {
      const float line = form.engraved->at(p.x, p.y);
      carved += 0.02f * (1 - smooth(0.0f, 0.028f, line));
    }
    // A soft joint, as a carver leaves it.
    const float blend = std::max(0.05f - std::abs(d - carved), 0.0f) / 0.05f;
    return std::min(d, carved) - blend * blend * 0.0125f;
  }

  const Scene& scene_;
  std::vector<Post> posts_;
};

// `dither`, 0 to 1, breaks up the bands that a slow change of dark tones would show.
int encoded(float v, float dither) {
  v = v < 0.6f ? v : 0.6f + 0.4f * (1 - std::exp(-(v - 0.6f) / 0.4f));  // soft shoulder: highlights keep their form
  const float s = v <= 0.0031308f ? 12.92f * v : 1.055f * std::pow(v, 1 / 2.4f) - 0.055f;
  return int(std::min(255.0f, clamp01(s) * 255 + dither));
}

}  // namespace

Vec linear(unsigned rgb) {
  const auto one = [](unsigned v) {
    const float s = float(v & 0xff) / 255;
    return s <= 0.04045f ? s / 12.92f : std::pow((s + 0.055f) / 1.055f, 2.4f);
  };
  return {one(rgb >> 16), one(rgb >> 8), one(rgb)};
}

Field::Field(const QPainterPath& path, bool filled, float margin) {
  constexpr double unit = 0.001;
  const QRectF bounds = path.boundingRect();
  box_ = QRectF(bounds.x() * unit, bounds.y() * unit, bounds.width() * unit, bounds.height() * unit);
  box_.adjust(-margin, -margin, margin, margin);
  cell_ = 0.008f;
  columns_ = int(box_.width() / cell_) + 2;
  rows_ = int(box_.height() / cell_) + 2;
  values_.resize(size_t(columns_) * size_t(rows_));
  const QList<QPolygonF> outlines = (filled ? path.simplified() : path).toSubpathPolygons();
  for (int row = 0; row < rows_; ++row) {
    for (int column = 0; column < columns_; ++column) {
      const float x = float(box_.x()) + float(column) * cell_, y = float(box_.y()) + float(row) * cell_;
      float best = std::numeric_limits<float>::max();
      bool inside = false;
      for (const QPolygonF& outline : outlines) {
        for (qsizetype k = 0; k + 1 < outline.size(); ++k) {
          const float ax = float(outline[k].x() * unit), ay = float(outline[k].y() * unit);
          const float bx = float(outline[k + 1].x() * unit), by = float(outline[k + 1].y() * unit);
          const float squared = (bx - ax) * (bx - ax) + (by - ay) * (by - ay);
          const float t = squared > 0 ? clamp01(((x - ax) * (bx - ax) + (y - ay) * (by - ay)) / squared) : 0;
          best = std::min(best, length(x - ax - t * (bx - ax), y - ay - t * (by - ay)));
          if ((ay > y) != (by > y) && x < ax + (y - ay) * (bx - ax) / (by - ay)) inside = !inside;
        }
      }
      values_[size_t(row) * size_t(columns_) + size_t(column)] = filled && inside ? -best : best;
    }
  }
}

float Field::at(float x, float y) const {
  const float left = float(box_.left()), top = float(box_.top());
  const float cx = std::clamp(x, left, float(box_.right())), cy = std::clamp(y, top, float(box_.bottom()));
  const float gx = (cx - left) / cell_, gy = (cy - top) / cell_;
  const int column = int(gx), row = int(gy);
  const float fx = gx - float(column), fy = gy - float(row);
  const float* at = &values_[size_t(row) * size_t(columns_) + size_t(column)];
  const float inner =
      (at[0] * (1 - fx) + at[1] * fx) * (1 - fy) + (at[columns_] * (1 - fx) + at[columns_ + 1] * fx) * fy;
  const float out = std::max(std::abs(x - cx), std::abs(y - cy));
  return out > 0 ? std::max(out, inner - out) : inner;
}

QImage render(const Scene& scene, int width, int height, int samples) {
  const Stage stage(scene);
  const Vec ahead = normal(scene.target - scene.eye);
  const Vec right = normal(cross(ahead, {0, 1, 0}));
  const Vec up = cross(right, ahead);
  const int few = std::min(samples, 6);
  QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
  for (int y = 0; y < height; ++y) {
    QRgb* line = reinterpret_cast<QRgb*>(image.scanLine(y));
    for (int x = 0; x < width; ++x) {
      Vec sum;
      float least = std::numeric_limits<float>::max(), most = 0;
      const float turn_a = hash(x, y, 1), turn_b = hash(x, y, 2);
      int taken = 0;
      // Where the first few rays agree there is nothing to smooth.
      while (taken < few || (taken < samples && most - least > 0.004f + 0.06f * most)) {
        // Two golden sequences: one spreads the rays over the pixel, one over the lens.
        const float k = float(taken++) + 0.5f;
        const float px = std::fmod(k * 0.7548777f, 1.0f), py = std::fmod(k * 0.5698403f, 1.0f);
        const float u = (float(x) + px - float(width) / 2) / float(height);
        const float v = (float(height) / 2 - float(y) - py) / float(height);
        Vec eye = scene.eye;
        Vec along = normal(ahead + right * (u * scene.angle) + up * (v * scene.angle));
        if (scene.lens > 0) {
          const Vec sharp = eye + along * (scene.focus / dot(along, ahead));
          const float radius = scene.lens * std::sqrt(std::fmod(k * 0.7548777f + turn_a, 1.0f));
          const float around = 6.2831853f * std::fmod(k * 0.6180340f + turn_b, 1.0f);
          eye = eye + right * (radius * std::cos(around)) + up * (radius * std::sin(around));
          along = normal(sharp - eye);
        }
        const Vec seen = stage.look(eye, along);
        least = std::min(least, seen.y);
        most = std::max(most, seen.y);
        sum = sum + seen;
      }
      const Vec c = sum * (1 / float(taken));
      line[x] = qRgb(encoded(c.x, turn_a), encoded(c.y, turn_a), encoded(c.z, turn_a));
    }
  }
  return image;
}

}  // namespace morva::pictures
