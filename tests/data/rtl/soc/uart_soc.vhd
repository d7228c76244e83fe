-- A serial port with a bus interface.
library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use ieee.math_real.all;

package bus_pkg is
  constant ADDR_WIDTH : natural := 8;
  subtype addr_t is unsigned(ADDR_WIDTH - 1 downto 0);
  subtype word_t is std_ulogic_vector(31 downto 0);
  type req_t is record
    addr : addr_t;
    data : word_t;
    we   : std_ulogic;
    stb  : std_ulogic;
  end record req_t;
  type rsp_t is record
    data : word_t;
    ack  : std_ulogic;
  end record;
  type req_array_t is array (natural range <>) of req_t;
  type rsp_array_t is array (natural range <>) of rsp_t;
  constant REQ_NONE : req_t := (addr => (others => '0'), data => (others => '0'), we => '0', stb => '0');
  function log2(n : positive) return natural;
  function parity(v : std_ulogic_vector) return std_ulogic;
  component clkbuf is port (i : in std_ulogic; o : out std_ulogic); end component;
  attribute mark_debug : string;
end package bus_pkg;

package body bus_pkg is
  function log2(n : positive) return natural is
  begin
    return natural(ceil(log2(real(n))));
  end function;
  function parity(v : std_ulogic_vector) return std_ulogic is
    variable p : std_ulogic := '0';
  begin
    for i in v'range loop
      p := p xor v(i);
    end loop;
    return p;
  end function parity;
end package body;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.bus_pkg.all;

entity fifo is
  generic (WIDTH : positive := 8; DEPTH : positive := 16);
  port (clk, rst : in std_ulogic; push : in std_ulogic; din : in std_ulogic_vector(WIDTH - 1 downto 0);
        pop : in std_ulogic; dout : out std_ulogic_vector(WIDTH - 1 downto 0); empty, full : out std_ulogic);
end entity;
architecture rtl of fifo is
  type mem_t is array (0 to DEPTH - 1) of std_ulogic_vector(WIDTH - 1 downto 0);
  signal mem : mem_t := (others => (others => '0'));
  signal rd, wr : unsigned(log2(DEPTH) downto 0);
begin
  assert DEPTH > 1 report "depth" severity failure;
  process (clk)
  begin
    if rising_edge(clk) then
      if rst then
        rd <= (others => '0'); wr <= (others => '0');
      else
        if push and not full then
          mem(to_integer(wr(wr'high - 1 downto 0))) <= din;
          wr <= wr + 1;
        end if;
        if pop then rd <= rd + 1; end if;
      end if;
    end if;
  end process;
  dout <= mem(to_integer(rd(rd'high - 1 downto 0)));
  empty <= '1' when rd = wr else '0';
  full <= '1' when (rd xor wr) = to_unsigned(DEPTH, rd'length) else '0';
end architecture;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.bus_pkg.all;
entity uart is
  generic (CLOCK_HZ : positive := 100_000_000; BAUD : positive := 115_200; NAME : string := "uart");
  port (clk, rst : in std_ulogic; req : in req_t := REQ_NONE; rsp : out rsp_t; rx : in std_ulogic; tx : out std_ulogic);
end entity uart;
architecture rtl of uart is
  type state_t is (idle, start, data, stop);
  signal state, state_next : state_t;
  signal divider : natural range 0 to CLOCK_HZ / BAUD;
  signal shift : std_ulogic_vector(9 downto 0);
  signal count : integer range 0 to 9;
  signal par : std_ulogic;
  attribute mark_debug of shift : signal is "true";
  alias lsb : std_ulogic is shift(0);
begin
  par <= parity(req.data);
  comb : process (all)
  begin
    state_next <= state;
    case state is
      when idle => if req.stb = '1' and req.we = '1' then state_next <= start; end if;
      when start => state_next <= data;
      when data => if count = 9 then state_next <= stop; end if;
      when stop => state_next <= idle;
    end case;
  end process comb;
  sync : process (clk) is
    variable v : integer;
  begin
    if rising_edge(clk) then
      state <= state_next;
      rsp.ack <= req.stb;
      if state = start then shift <= par & req.data(7 downto 0) & '0'; count <= 0;
      elsif state = data then shift <= '1' & shift(9 downto 1); v := count + 1; count <= v mod 10;
      end if;
      if rst = '1' then state <= idle; divider <= 0; else divider <= (divider + 1) mod (CLOCK_HZ / BAUD); end if;
    end if;
  end process;
  tx <= lsb when state = data else '1';
  rsp.data <= (31 downto 8 => '0') & shift(7 downto 0) when req.addr = x"04" else (others => '0');
  -- psl default clock is rising_edge(clk);
  -- psl assert always (req.stb -> next rsp.ack);
end architecture rtl;

library ieee;
use ieee.std_logic_1164.all;
use ieee.numeric_std.all;
use work.bus_pkg.all;
library unisim;
use unisim.vcomponents.all;
entity soc is
  generic (UARTS : positive := 3);
  port (clk_in, rst : in std_logic; rx : in std_logic_vector(UARTS - 1 downto 0); tx : out std_logic_vector(UARTS - 1 downto 0);
        bus_req : in req_t; bus_rsp : out rsp_t; pad : inout std_logic_vector(1 downto 0));
end entity;
architecture structure of soc is
  component uart is
    generic (CLOCK_HZ : positive := 100_000_000; BAUD : positive := 115_200; NAME : string := "uart");
    port (clk, rst : in std_ulogic; req : in req_t := REQ_NONE; rsp : out rsp_t; rx : in std_ulogic; tx : out std_ulogic);
  end component;
  for all : uart use entity work.uart(rtl);
  signal clk, locked : std_logic;
  signal reqs : req_array_t(0 to UARTS - 1);
  signal rsps : rsp_array_t(0 to UARTS - 1);
  signal fill : std_ulogic_vector(7 downto 0);
  signal locked2, \input\ : std_logic;
  function image(v : std_ulogic_vector(7 downto 0)) return std_ulogic_vector is begin return v; end function;
begin
  bufg_i : BUFG port map (I => clk_in, O => clk);
  buf2 : clkbuf port map (i => clk_in, o => locked);
  gen : for i in 0 to UARTS - 1 generate
    constant SEL : natural := i;
    signal hit : std_ulogic;
  begin
    hit <= '1' when bus_req.addr(7 downto 4) = SEL else '0';
    reqs(i) <= bus_req when hit = '1' else REQ_NONE;
    u : uart generic map (NAME => "uart" & integer'image(i)) port map (clk => clk, rst => rst, req => reqs(i), rsp => rsps(i), rx => rx(i), tx => tx(i));
    first : if i = 0 generate
      f : entity work.fifo generic map (WIDTH => 8, DEPTH => 4)
        port map (clk => clk, rst => rst, push => hit, din => rsps(0).data(7 downto 0), pop => '0', dout => fill, empty => open, full => open);
    end generate first;
  end generate;
  \input\ <= locked;
  process (rsps) begin
    bus_rsp <= (data => (others => '0'), ack => '0');
    for i in rsps'range loop
      if rsps(i).ack = '1' then bus_rsp <= rsps(i); end if;
    end loop;
  end process;
  pads : block is
    signal oe : std_logic;
  begin
    oe <= locked;
    pad(0) <= '0' when oe = '1' else 'Z';
    pad(1) <= 'Z';
  end block pads;
end architecture;

configuration soc_cfg of soc is
  for structure
  end for;
end configuration;

library ieee; use ieee.std_logic_1164.all; use std.textio.all; use std.env.all;
entity tb is end;
architecture sim of tb is
  signal clk : std_logic := '0';
  signal r : real;
  file log : text;
begin
  clk <= not clk after 5 ns;
  process variable l : line; begin
    file_open(log, "log.txt", write_mode);
    write(l, string'("hello")); writeline(output, l);
    wait until rising_edge(clk); r <= 1.0; finish;
  end process;
end;
