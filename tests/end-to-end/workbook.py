"""Small workbooks, written as the format has it."""
import zipfile
from xml.sax.saxutils import escape

HEAD = '<?xml version="1.0" encoding="UTF-8" standalone="yes"?>'
MAIN = 'http://schemas.openxmlformats.org/spreadsheetml/2006/main'
OFFICE = 'http://schemas.openxmlformats.org/officeDocument/2006/relationships'
PACKAGE = 'http://schemas.openxmlformats.org/package/2006'
PARTS = 'application/vnd.openxmlformats-officedocument.spreadsheetml.'


def letters(column):
    """1: A, 27: AA."""
    text = ''
    while column:
        column, letter = divmod(column - 1, 26)
        text = chr(65 + letter) + text
    return text


def cell(row, column, value):
    place = f'{letters(column)}{row}'
    if isinstance(value, str):
        return f'<c r="{place}" t="inlineStr"><is><t>{escape(value)}</t></is></c>'
    return f'<c r="{place}"><v>{value}</v></c>'


def sheet(rows, frozen):
    """frozen: how many rows and columns stay in place."""
    body = ''.join(f'<row r="{r}">{"".join(cell(r, c, value) for c, value in enumerate(row, 1) if value != "")}</row>'
                   for r, row in enumerate(rows, 1))
    down, across = frozen
    corner = f'{letters(across + 1)}{down + 1}'
    pane = 'bottomRight' if down and across else 'bottomLeft' if down else 'topRight'
    x = f' xSplit="{across}"' if across else ''
    y = f' ySplit="{down}"' if down else ''
    panes = f'<pane{x}{y} topLeftCell="{corner}" activePane="{pane}" state="frozen"/>' if down or across else ''
    return (f'{HEAD}<worksheet xmlns="{MAIN}"><sheetViews><sheetView workbookViewId="0">{panes}</sheetView></sheetViews>'
            f'<sheetData>{body}</sheetData></worksheet>')


def write_workbook(path, sheets):
    """sheets: by name, rows of numbers and texts, or (rows, frozen)."""
    contents = [entry if isinstance(entry, tuple) else (entry, (0, 0)) for entry in sheets.values()]
    numbers = range(1, len(contents) + 1)
    types = ''.join(f'<Override PartName="/xl/worksheets/sheet{n}.xml" ContentType="{PARTS}worksheet+xml"/>' for n in numbers)
    entries = ''.join(f'<sheet name="{escape(name)}" sheetId="{n}" r:id="rId{n}"/>' for n, name in zip(numbers, sheets))
    links = ''.join(f'<Relationship Id="rId{n}" Type="{OFFICE}/worksheet" Target="worksheets/sheet{n}.xml"/>' for n in numbers)
    # Under another name first: nobody may meet half a file.
    arriving = path.with_name('.' + path.name)
    with zipfile.ZipFile(arriving, 'w', zipfile.ZIP_DEFLATED) as package:
        package.writestr('[Content_Types].xml', f'{HEAD}<Types xmlns="{PACKAGE}/content-types"><Default Extension="rels" '
                         'ContentType="application/vnd.openxmlformats-package.relationships+xml"/><Override '
                         f'PartName="/xl/workbook.xml" ContentType="{PARTS}sheet.main+xml"/>{types}</Types>')
        package.writestr('_rels/.rels', f'{HEAD}<Relationships xmlns="{PACKAGE}/relationships"><Relationship Id="rId1" '
                         f'Type="{OFFICE}/officeDocument" Target="xl/workbook.xml"/></Relationships>')
        package.writestr('xl/workbook.xml', f'{HEAD}<workbook xmlns="{MAIN}" xmlns:r="{OFFICE}"><sheets>{entries}</sheets></workbook>')
        package.writestr('xl/_rels/workbook.xml.rels', f'{HEAD}<Relationships xmlns="{PACKAGE}/relationships">{links}</Relationships>')
        for number, (rows, frozen) in zip(numbers, contents):
            package.writestr(f'xl/worksheets/sheet{number}.xml', sheet(rows, frozen))
    arriving.replace(path)
    return path
