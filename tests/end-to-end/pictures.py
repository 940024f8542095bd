"""What is on the screen, pixel by pixel."""
import subprocess


def pixels(*command):
    """The picture that a command of ImageMagick writes, as its size and rows of three bytes a pixel."""
    data = subprocess.run([*command, '-depth', '8', 'ppm:-'], check=True, capture_output=True).stdout
    magic, size, depth, body = data.split(b'\n', 3)
    width, height = map(int, size.split())
    assert (magic, depth) == (b'P6', b'255'), (magic, depth)
    return width, [body[i * width * 3:(i + 1) * width * 3] for i in range(height)]


def screen():
    return pixels('import', '-window', 'root')


def contains(screen, picture):
    """Whether the picture stands somewhere on the screen, pixel by pixel."""
    _, rows = screen
    _, wanted = picture
    key = max(range(len(wanted)), key=lambda i: len(set(wanted[i])))    # a row that is not plain
    for y in range(key, len(rows) - len(wanted) + key + 1):
        at = rows[y].find(wanted[key])
        while at >= 0:
            if at % 3 == 0 and all(rows[y - key + i][at:at + len(row)] == row for i, row in enumerate(wanted)):
                return True
            at = rows[y].find(wanted[key], at + 1)
    return False


def part(place):
    """What stands in that part of the screen (left, top, width, height): its rows."""
    left, top, width, height = place
    _, rows = screen()
    return [row[left * 3:(left + width) * 3] for row in rows[top:top + height]]


def colors(place):
    """The colours in that part of the screen, each as three bytes."""
    return {row[x:x + 3] for row in part(place) for x in range(0, len(row), 3)}
